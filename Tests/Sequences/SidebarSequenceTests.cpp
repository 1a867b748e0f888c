#include "Tests/Support/Sequences.h"
#include "Tests/Sequences/SidebarSequence.h"

#include <rapidcheck.h>

static rc::Gen<Step> anyStep()
{
    std::vector<unsigned> deeds;
    for (std::size_t deed = 0; deed < SidebarSequence::deeds().size(); ++deed) {
        deeds.insert(deeds.end(), SidebarSequence::deeds()[deed].weight, static_cast<unsigned>(deed));
    }
    return rc::gen::build<Step>(rc::gen::set(&Step::deed, rc::gen::elementOf(deeds)),
        rc::gen::set(&Step::which, rc::gen::inRange(0U, 60U)),
        rc::gen::set(&Step::value, rc::gen::inRange(0U, 840U)));
}

TEST(SidebarSequence, showsAFreshBuildAfterAnyStepsWithAsLittleWorkAsThatTakes)
{
    auto const holds = [] {
        auto const steps = *rc::gen::container<std::vector<Step>>(anyStep());
        SidebarSequence sequence;
        for (auto const& step : steps) {
            sequence.perform(step);
        }
        sequence.finish();
    };
    EXPECT_TRUE(checkSequences("any steps", 600, holds));
}
