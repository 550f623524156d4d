#include "extracting/Folder.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace inspect {

namespace {

constexpr mode_t ALL_OF_FOLDERS = 0777; // but for what the umask has
constexpr mode_t ALL_OF_FILES = 0666;

std::string textOf(int error) {
    return std::error_code(error, std::generic_category()).message();
}

/// A file that goes again unless all of it is written.
class NewFile {
public:
    NewFile(int folder, const std::string& name, int descriptor)
        : m_folder(folder), m_name(name), m_descriptor(descriptor) {}
    ~NewFile() {
        if (m_descriptor >= 0) {
            close(m_descriptor);
            unlinkat(m_folder, m_name.c_str(), 0);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// @return 0, or why it cannot be written
    int write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t count = ::write(m_descriptor, content.data(), content.size());
            if (count >= 0) {
                content.remove_prefix(static_cast<std::size_t>(count));
            } else if (errno != EINTR) {
                return errno;
            }
        }
        if (close(std::exchange(m_descriptor, -1)) != 0) { // some file systems say only now that there is no space
            const int error = errno;
            unlinkat(m_folder, m_name.c_str(), 0);
            return error;
        }
        return 0;
    }

private:
    int m_folder;
    const std::string& m_name;
    int m_descriptor;
};

} // namespace

Folder::Folder(const std::string& path) : m_path(path), m_descriptor(-1) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (!error) {
        m_descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        error = m_descriptor < 0 ? std::error_code(errno, std::generic_category()) : error;
    }
    if (error) {
        throw std::runtime_error(path + ": " + error.message());
    }
}

Folder::~Folder() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

Folder::Folder(Folder&& other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

Folder Folder::enter(const std::string& name) const {
    if (mkdirat(m_descriptor, name.c_str(), ALL_OF_FOLDERS) != 0 && errno != EEXIST) {
        fail(name, errno);
    }
    const int descriptor = openat(m_descriptor, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        fail(name, errno);
    }
    return {m_path + '/' + name, descriptor};
}

/// What is replaced goes first: a link would else be followed, and another name of the same file change.
void Folder::write(const std::string& name, std::string_view content, Existing existing) const {
    if (existing == Existing::Replaced && unlinkat(m_descriptor, name.c_str(), 0) != 0 && errno != ENOENT) {
        fail(name, errno);
    }
    const int descriptor =
        openat(m_descriptor, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ALL_OF_FILES);
    if (descriptor < 0) {
        fail(name, errno);
    }
    if (const int error = NewFile(m_descriptor, name, descriptor).write(content); error != 0) {
        fail(name, error);
    }
}

void Folder::fail(const std::string& name, int error) const {
    switch (error) {
    case EEXIST:
        throw Refused("there is one of this name already", false);
    case ELOOP:
        throw Refused("there is a symbolic link of this name", false);
    case ENOTDIR: {
        struct stat status {};
        const bool isLink =
            fstatat(m_descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
        throw Refused(isLink ? "there is a symbolic link of this name" : "there is a file of this name", false);
    }
    case EISDIR:
        throw Refused("there is a folder of this name", false);
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
        throw Refused("the file system does not take this name", true);
    default:
        throw std::runtime_error(m_path + '/' + name + ": " + textOf(error));
    }
}

} // namespace inspect
