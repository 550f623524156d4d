#include "Inflation.h"

#include "Reader.h"

#include <algorithm>
#include <new>
#define ZLIB_CONST // its input is not changed
#include <zlib.h>

namespace dsmcc {

namespace {

class Inflater {
public:
    explicit Inflater(ByteView bytes) {
        m_stream.next_in = bytes.data;
        m_stream.avail_in = static_cast<uInt>(bytes.size);
        if (inflateInit(&m_stream) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflater() { inflateEnd(&m_stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Fills as much of the room as there are bytes for. @return a status of zlib
    int fill(std::uint8_t* room, std::size_t size) {
        m_stream.next_out = room;
        m_stream.avail_out = static_cast<uInt>(size);
        return inflate(&m_stream, Z_NO_FLUSH);
    }

    std::size_t unfilled() const { return m_stream.avail_out; }
    std::size_t taken() const { return m_stream.total_in; }
    std::string why() const { return m_stream.msg == nullptr ? "the bytes end too early" : m_stream.msg; }

private:
    z_stream m_stream{};
};

} // namespace

Bytes inflated(ByteView bytes, std::uint32_t originalSize) {
    constexpr std::uint64_t STEP = 65536;
    const std::uint64_t most = std::uint64_t{originalSize} + 1; // one more shows that it is not the size
    Inflater inflater(bytes);
    Bytes result;
    int status = Z_OK;
    while (status == Z_OK && result.size() < most) {
        const std::size_t filled = result.size();
        result.resize(static_cast<std::size_t>(std::min(most, std::max(STEP, std::uint64_t{filled} * 2))));
        status = inflater.fill(result.data() + filled, result.size() - filled);
        result.resize(result.size() - inflater.unfilled());
    }
    if (status == Z_MEM_ERROR) {
        throw std::bad_alloc();
    }
    if (result.size() > originalSize || (status == Z_STREAM_END && result.size() != originalSize)) {
        const std::string more = result.size() > originalSize ? "more than " : "";
        refuse(RefusalKind::OriginalSize, std::min<std::size_t>(result.size(), originalSize),
               "it inflates to " + more + std::to_string(std::min<std::uint64_t>(result.size(), originalSize)) +
                   " bytes, and " + std::to_string(originalSize) + " are announced");
    }
    if (status != Z_STREAM_END) {
        refuse(RefusalKind::Inflation, inflater.taken(), "it does not inflate: " + inflater.why());
    }
    return result;
}

} // namespace dsmcc
