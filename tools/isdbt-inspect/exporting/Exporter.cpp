#include "exporting/Exporter.h"

#include "sections/BoundedMap.h"
#include "text/FieldText.h"
#include "text/SectionText.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <unistd.h>
#include <utility>
#include <variant>

namespace inspect {

namespace {

namespace fs = std::filesystem;

constexpr const char* BINARY = ".sec";
constexpr const char* TEXT = ".hex";

std::string_view bytesOf(const Section& section) {
    return {reinterpret_cast<const char*>(section.data()), section.size()};
}

bool isFolder(const std::string& path) {
    return (!path.empty() && path.back() == '/') || fs::is_directory(path);
}

/// A file that was not there before.
class NewFile {
public:
    explicit NewFile(std::string path)
        : m_path(std::move(path)), m_descriptor(open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
        if (m_descriptor < 0) {
            fail();
        }
    }
    ~NewFile() { close(m_descriptor); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
            if (count >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(count));
            } else if (errno != EINTR) {
                fail();
            }
        }
    }

private:
    [[noreturn]] void fail() const { throw std::runtime_error(m_path + ": " + std::strerror(errno)); }

    std::string m_path;
    int m_descriptor;
};

/// How a section stands in a file of all.
using Form = std::string (*)(const Section& section, const SectionReport& report);

std::string asBytes(const Section& section, const SectionReport& /*report*/) {
    return std::string(bytesOf(section));
}

/// Below a comment that says what it is.
std::string asText(const Section& section, const SectionReport& report) {
    Page page{{}, {"// " + sectionTitle(report)}};
    appendBytes(page, {section.data(), section.data() + section.size()}, 0);
    std::string text;
    for (const Line& line : page.lines) {
        text += line.text() + '\n';
    }
    return text;
}

/// All in one file.
class FileExporter : public Exporter {
public:
    FileExporter(std::string path, Form form) : m_path(std::move(path)), m_form(form) {}

private:
    void write(const Section& section, const SectionReport& report) override {
        if (!m_file) {
            m_file.emplace(m_path);
        }
        m_file->write(m_form(section, report));
    }

    std::string m_path;
    Form m_form;
    std::optional<NewFile> m_file;
};

/// "pid0x0010-tid0x40-ext0x02E1-v3-s0"
std::string nameOf(const Section& section) {
    std::string name = section.pid() ? fmt::format("pid0x{:04X}-", *section.pid()) : "";
    name += fmt::format("tid0x{:02X}", section.tableId());
    if (const std::optional<LongHeader> header = section.longHeader()) {
        name += fmt::format("-ext0x{:04X}-v{}-s{}", header->extension, header->version, header->sectionNumber);
    }
    return name;
}

/// A file for each. Different sections of the same name are numbered; the same one is there once.
class FolderExporter : public Exporter {
public:
    explicit FolderExporter(fs::path folder) : m_folder(std::move(folder)) {}

private:
    void write(const Section& section, const SectionReport& report) override {
        const std::string name = nameOf(section);
        const std::pair content(name, report.fingerprint);
        if (m_written.find(content) != nullptr) {
            return;
        }
        m_written.put(content, {});
        std::error_code error;
        fs::create_directories(m_folder, error);
        if (error) {
            throw std::runtime_error(m_folder.string() + ": " + error.message());
        }
        const unsigned* const last = m_numbers.find(name);
        unsigned number = last == nullptr ? 1 : *last;
        while (!isIn(pathOf(name, number), section)) {
            ++number;
        }
        m_numbers.put(name, number);
        ++m_taken;
    }

    std::string remark() const override {
        return m_known == 0 ? ""
                            : fmt::format("{}: {} of {} sections were there already, and are left as they are",
                                          m_folder.string(), m_known, m_taken);
    }

    static constexpr std::size_t CAPACITY = 16384;

    fs::path pathOf(const std::string& name, unsigned number) const {
        return m_folder / (name + (number == 1 ? "" : fmt::format("-{}", number)) + BINARY);
    }

    /// Makes the file, unless there is one. @return false when it holds something else.
    bool isIn(const fs::path& path, const Section& section) {
        if (!fs::exists(fs::symlink_status(path))) {
            NewFile(path).write(bytesOf(section));
            return true;
        }
        std::ifstream file(path, std::ios::binary);
        std::string content(section.size() + 1, '\0');
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
        const bool same =
            std::string_view(content).substr(0, static_cast<std::size_t>(file.gcount())) == bytesOf(section);
        m_known += same ? 1U : 0U;
        return same;
    }

    fs::path m_folder;
    std::uint64_t m_taken = 0;
    std::uint64_t m_known = 0; ///< of these, those of which there was a file
    BoundedMap<std::pair<std::string, std::uint32_t>, std::monostate> m_written{CAPACITY};
    BoundedMap<std::string, unsigned> m_numbers{CAPACITY}; ///< the last of each name: a TOT comes for ever
};

} // namespace

std::string objectionTo(const std::string& path) {
    if (isFolder(path)) {
        return {};
    }
    const fs::path ending = fs::path(path).extension();
    if (ending != BINARY && ending != TEXT) {
        return path + " is no folder and ends neither in .sec nor in .hex; the name of a new folder ends in /";
    }
    return fs::exists(fs::symlink_status(path)) ? path + " exists already" : "";
}

std::unique_ptr<Exporter> exporterTo(const std::string& path) {
    if (isFolder(path)) {
        return std::make_unique<FolderExporter>(path);
    }
    return std::make_unique<FileExporter>(path, fs::path(path).extension() == TEXT ? asText : asBytes);
}

} // namespace inspect
