#pragma once

#include "Tests/Sequences/LiveHost.h"

/// A few families that are alike, and everything that happens to them and to the view on them from outside
/// the sidebar. The numbers choose among what is there at the time; without anything to choose nothing
/// happens.
class FamilyChanges {
public:
    explicit FamilyChanges(std::shared_ptr<LiveHost> host);

    using Change = void (FamilyChanges::*)(unsigned which, unsigned value);
    struct Named {
        char const* name;
        Change change;
        unsigned weight;
    };
    static std::vector<Named> const& all();

    /// A number that may be the one that is there, a hair beside it, zero of either sign, or far away.
    double number(unsigned choice) const;
    void closeFamily(unsigned, unsigned);
    void openFamily(unsigned, unsigned);

private:
    void insertAxis(unsigned which, unsigned value);
    void removeAxis(unsigned which, unsigned value);
    void moveAxis(unsigned which, unsigned value);
    void replaceAxis(unsigned which, unsigned value);
    void renameAxis(unsigned which, unsigned value);
    void changeDefault(unsigned which, unsigned value);
    void insertMaster(unsigned which, unsigned value);
    void removeMaster(unsigned which, unsigned value);
    void moveMaster(unsigned which, unsigned value);
    void insertLayer(unsigned which, unsigned value);
    void removeLayer(unsigned which, unsigned value);
    void moveLayer(unsigned which, unsigned value);
    void undo(unsigned which, unsigned value);
    void redo(unsigned which, unsigned value);
    void editGlyph(unsigned which, unsigned value);
    void chooseMaster(unsigned which, unsigned value);
    void chooseLayer(unsigned which, unsigned value);
    void preview(unsigned which, unsigned value);
    void endPreview(unsigned which, unsigned value);

    /// The axes of the font, or of the edited glyph.
    struct AxisList {
        TLFont* font { nullptr };
        TLGlyph* glyph { nullptr };
        std::vector<std::shared_ptr<TLAxis>> const& axes() const;
        bool isEmpty() const { return (!font && !glyph) || axes().empty(); }
        std::size_t index(unsigned which) const { return which / 2 % axes().size(); }
        void insert(std::shared_ptr<TLAxis> const& axis, unsigned place) const;
        void remove(std::size_t index) const;
    };
    AxisList axisList(unsigned which) const;
    TLFont* font() const;
    std::shared_ptr<TLGlyph> glyph() const; ///< The edited one, of the font; null when none is.
    std::shared_ptr<TLAxis> newAxis(unsigned which, unsigned value) const;

    std::shared_ptr<LiveHost> m_host;
    unsigned m_names { 0 };
};
