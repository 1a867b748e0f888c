#pragma once

#include <set>
#include <string>
#include <string_view>

/// Names of files in one folder, in the lower case in which they are compared.
using UsedFileNames = std::set<std::string, std::less<>>;

std::string lowerCased(std::string_view text);

/// A file name for a name of a person's, by the convention of the UFO format: "A" becomes "A_.glif", what is
/// not allowed everywhere becomes "_", and a name that is in use, whatever its case, gets a number. The new
/// name is added to `used`.
std::string makeFileName(
    std::string_view name, std::string_view prefix, std::string_view suffix, UsedFileNames& used);
