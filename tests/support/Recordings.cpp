#include "support/Recordings.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

constexpr const char* INDEX = "INDEX.tsv";

std::ifstream opened(const std::string& file) {
    std::ifstream stream(std::string(TEST_DATA "/") + file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " TEST_DATA "/" + file);
    }
    return stream;
}

Lines split(const std::string& line, char separator) {
    Lines fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, separator);) {
        fields.push_back(field);
    }
    return fields;
}

} // namespace

Lines recordedLines(const std::string& file) {
    std::ifstream stream = opened(file);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<Recording> recordings() {
    std::vector<Recording> result;
    const Lines lines = recordedLines(INDEX);
    for (std::size_t i = 1; i < lines.size(); ++i) { // the first line names the columns
        // file | class | pid | table_id | sections | bytes | descriptor tags
        const Lines fields = split(lines[i], '\t');
        result.push_back({fields.at(0), static_cast<QUOR_U8>(std::stoul(fields.at(3), nullptr, 16)),
                          std::stoul(fields.at(4)), std::stoul(fields.at(5))});
    }
    return result;
}

std::vector<ByteVector> splitSections(const ByteVector& bytes) {
    constexpr std::size_t HEADER = 3;
    std::vector<ByteVector> sections;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t left = bytes.size() - at;
        const std::size_t size = left < HEADER ? HEADER : HEADER + ((bytes[at + 1] & 0x0FU) << 8 | bytes[at + 2]);
        if (size > left) {
            throw std::runtime_error("section cut off at byte " + std::to_string(at));
        }
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        sections.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(size));
        at += size;
    }
    return sections;
}

std::vector<ByteVector> recordedSections(const std::string& file) {
    std::ifstream stream = opened(file);
    return splitSections(ByteVector(std::istreambuf_iterator<char>(stream), {}));
}

std::vector<RecordedSection> recordedSections(QUOR_U8 tableId) {
    std::vector<RecordedSection> result;
    for (const Recording& recording : recordings()) {
        if (recording.tableId != tableId) {
            continue;
        }
        for (ByteVector& section : recordedSections(recording.file)) {
            result.push_back({recording.file + " #" + std::to_string(result.size()), std::move(section)});
        }
    }
    return result;
}
