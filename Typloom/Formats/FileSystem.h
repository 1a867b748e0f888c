#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The calls by which a save changes files. Names are single names in the folder of a descriptor.
/// Each gives a number that is not negative, or the system's error number negated.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// Never follows a link at the name's place. `mode` is for a new file, before the user's mask.
    virtual int open(int folder, std::string const& name, int flags, unsigned mode);
    virtual std::ptrdiff_t write(int file, std::string_view bytes);
    /// Of a file its content, of a folder its names.
    virtual int synchronize(int descriptor);
    /// Everything on the disk on which the file or folder lies.
    virtual int synchronizeDisk(int descriptor);
    virtual int setMode(int file, unsigned mode);
    /// What has the new name is replaced.
    virtual int rename(int folder, std::string const& name, std::string const& newName);
    virtual int removeFile(int folder, std::string const& name);
    /// An empty one only.
    virtual int removeFolder(int folder, std::string const& name);
    virtual int makeFolder(int folder, std::string const& name);

    /// The one of the machine.
    static FileSystem& real();
};

/// Why something could not be written, as a clause. `problem` is an error number of the system.
std::string reasonOfWriting(int problem);
