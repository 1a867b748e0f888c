#pragma once

/// While one lives, changes to document objects ask for no update: reading a glyph from its files
/// changes nothing that a person sees.
class UpdateSuspension {
public:
    UpdateSuspension();
    ~UpdateSuspension();
    UpdateSuspension(UpdateSuspension const&) = delete;
    UpdateSuspension& operator=(UpdateSuspension const&) = delete;
};
