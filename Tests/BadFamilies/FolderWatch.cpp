#include "Tests/BadFamilies/FolderWatch.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MODIFY | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB
    | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF;
/// The system gives a user a limited number of watches.
constexpr std::size_t mostFolders = 500;

} // namespace

FolderWatch::FolderWatch(std::filesystem::path const& root)
    : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    , m_root(root)
{
    std::vector<std::filesystem::path> folders { root };
    for (auto const& entry : std::filesystem::recursive_directory_iterator(
             root, std::filesystem::directory_options::skip_permission_denied)) {
        if (!entry.is_symlink() && entry.is_directory() && folders.size() < mostFolders) {
            folders.push_back(entry.path());
        }
    }
    for (auto const& folder : folders) {
        int const watch = ::inotify_add_watch(m_descriptor, folder.c_str(), changes | IN_OPEN);
        if (watch >= 0) {
            m_folders[watch] = folder;
        } else if (errno != EACCES) { // Nobody can look into that one.
            throw std::runtime_error(std::string("no watch: ") + std::strerror(errno));
        }
    }
}

FolderWatch::~FolderWatch()
{
    ::close(m_descriptor);
}

FolderWatch::Seen FolderWatch::look()
{
    Seen seen;
    alignas(inotify_event) std::array<char, 65'536> buffer {};
    for (ssize_t length = 0; (length = ::read(m_descriptor, buffer.data(), buffer.size())) > 0;) {
        for (char const* place = buffer.data(); place < buffer.data() + length;) {
            auto const* event = reinterpret_cast<inotify_event const*>(place);
            auto const path = m_folders.at(event->wd) / (event->len > 0 ? event->name : "");
            auto& list = (event->mask & changes) != 0 ? seen.changed : seen.opened;
            list.push_back(path.lexically_relative(m_root).string());
            place += sizeof(inotify_event) + event->len;
        }
    }
    return seen;
}
