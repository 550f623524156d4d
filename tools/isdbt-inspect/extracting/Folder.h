#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace inspect {

/// A folder into which files are written. Nothing that is done through it leaves it, whatever lies in it: it follows no
/// symbolic link.
class Folder {
public:
    /// Something in the folder is in the way, or its file system does not take a name. The others can be written.
    struct Refused : std::runtime_error {
        Refused(const std::string& why, bool isOfName) : std::runtime_error(why), ofName(isOfName) {}
        bool ofName; ///< another one might do
    };

    /// What was there before.
    enum class Existing { Kept, Replaced };

    /// The folder of a path, which is made if there is none. The path is the user's: its links are followed.
    /// @throws std::runtime_error when there is none for all that
    explicit Folder(const std::string& path);

    ~Folder();
    Folder(Folder&& other) noexcept;
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    Folder& operator=(Folder&&) = delete;

    /// A folder in it, which is made if there is none.
    /// @param name one that has no slash
    /// @throws Refused, or std::runtime_error
    Folder enter(const std::string& name) const;

    /// Makes a file, whole or not at all.
    /// @throws Refused, or std::runtime_error when nothing can be written
    void write(const std::string& name, std::string_view content, Existing existing) const;

    const std::string& path() const { return m_path; }

private:
    Folder(std::string path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}

    [[noreturn]] void fail(const std::string& name, int error) const;

    std::string m_path;
    int m_descriptor;
};

} // namespace inspect
