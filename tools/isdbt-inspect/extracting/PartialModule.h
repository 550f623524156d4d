#pragma once

#include <cstdint>
#include <dsmcc/Carousel.h>
#include <map>
#include <string_view>

namespace inspect {

/// A module of which blocks are missing: zeros are in their place.
class PartialModule {
public:
    /// Some bytes of it.
    struct Part {
        std::string_view bytes;
        std::uint64_t missing; ///< how many of these are zeros in the place of others
    };

    /// @param module that is not compressed: of a compressed one nothing can be read
    explicit PartialModule(const dsmcc::Module& module);

    /// All of it.
    Part whole() const { return part(0, m_bytes.size()); }

    /// Whether what begins the object of a file is there.
    bool has(const dsmcc::Bytes& objectKey) const { return m_files.count(objectKey) != 0; }

    /// The content of a file that it has.
    Part file(const dsmcc::Bytes& objectKey) const;

private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    Part part(std::size_t begin, std::size_t end) const;
    void findFile(std::size_t at);

    dsmcc::Bytes m_bytes;
    std::vector<Range> m_missing;
    std::map<dsmcc::Bytes, Range> m_files; ///< by their object keys
};

} // namespace inspect
