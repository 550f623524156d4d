#include "pages/PageFile.h"

#include "pages/Page.h"
#include "pages/PageParts.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace inspect {

PageFile::PageFile(const std::string& path) : m_path(path), m_file(path, std::ios::binary) {
    if (!(m_file << PAGE_BEGIN << std::flush)) {
        throw std::runtime_error(m_path + ": " + std::strerror(errno));
    }
}

void PageFile::add(std::string_view lines) {
    const std::string part = pagePart(lines);
    const std::lock_guard lock(m_mutex);
    m_file << part;
}

void PageFile::end() {
    if (!(m_file << PAGE_END << std::flush)) {
        throw std::runtime_error(m_path + ": the page cannot be written");
    }
}

} // namespace inspect
