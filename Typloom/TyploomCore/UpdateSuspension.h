#pragma once

/// While one lives, changes to document objects ask for no update and cannot be undone: reading a
/// glyph from its files changes nothing that a person sees.
class UpdateSuspension {
public:
    UpdateSuspension();
    ~UpdateSuspension();
    static bool isActive();
    UpdateSuspension(UpdateSuspension const&) = delete;
    UpdateSuspension& operator=(UpdateSuspension const&) = delete;
};
