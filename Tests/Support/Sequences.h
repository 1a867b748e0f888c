#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>

/// Whether every instruction is checked, which takes five times as long.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool isSlowedDown = true;
#else
inline constexpr bool isSlowedDown = false;
#endif

/// How many sequences a test runs: `usual`, fewer where every instruction is checked, or what the environment
/// says: TYPLOOM_SEQUENCES, a factor in percent.
inline int sequenceCount(int usual)
{
    usual = isSlowedDown ? usual / 8 : usual;
    auto const* const percent = std::getenv("TYPLOOM_SEQUENCES");
    return std::max(
        1, percent ? static_cast<int>(static_cast<long>(usual) * std::atoi(percent) / 100) : usual);
}

/// Always the same, or TYPLOOM_SEED.
inline unsigned long long sequenceSeed()
{
    auto const* const seed = std::getenv("TYPLOOM_SEED");
    return seed ? std::strtoull(seed, nullptr, 10) : 5;
}

/// Checks a property. What fails is made shorter and printed with its seed.
template <class Property> bool checkSequences(std::string const& name, int usual, Property const& property)
{
    rc::detail::TestParams params;
    params.seed = sequenceSeed();
    params.maxSuccess = sequenceCount(usual);
    params.maxSize = 100;
    rc::detail::TestMetadata const metadata { name, name };
    auto const result = rc::detail::checkTestable(property, metadata, params);
    if (!result.template is<rc::detail::SuccessResult>()) {
        std::ostringstream text;
        rc::detail::printResultMessage(result, text);
        ADD_FAILURE() << "With TYPLOOM_SEED=" << params.seed << ":\n" << text.str();
        return false;
    }
    return true;
}
