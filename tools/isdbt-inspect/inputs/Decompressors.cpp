#define ZLIB_CONST

#include "inputs/Decompressor.h"

#include <lzma.h>
#include <new>
#include <string_view>
#include <zlib.h>
#include <zstd.h>

namespace inspect {

namespace {

/// What the strongest usual settings need. A file that was made to need more must not get it.
constexpr std::uint64_t MEMORY_LIMIT = std::uint64_t{128} << 20;

class Gzip : public Decompressor {
public:
    static constexpr std::string_view MAGIC{"\x1F\x8B\x08", 3};

    Gzip() {
        constexpr int GZIP_ONLY = 16;
        if (inflateInit2(&m_stream, GZIP_ONLY + MAX_WBITS) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Gzip() override { inflateEnd(&m_stream); }

    Progress advance(const std::uint8_t* data, std::size_t size, std::uint8_t* target, std::size_t room) override {
        if (m_complete && size == 0) {
            return {0, 0, {}};
        }
        if (m_complete) { // gzip files may stand one behind the other
            inflateReset(&m_stream);
        }
        m_stream.next_in = data;
        m_stream.avail_in = static_cast<uInt>(size);
        m_stream.next_out = target;
        m_stream.avail_out = static_cast<uInt>(room);
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        m_complete = result == Z_STREAM_END;
        const bool fails = result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR;
        return {size - m_stream.avail_in, room - m_stream.avail_out, fails ? reason() : ""};
    }

    bool complete() const override { return m_complete; }

private:
    std::string reason() const { return m_stream.msg == nullptr ? "damaged" : m_stream.msg; }

    z_stream m_stream{};
    bool m_complete = false;
};

class Xz : public Decompressor {
public:
    static constexpr std::string_view MAGIC{"\xFD"
                                            "7zXZ\0",
                                            6};

    Xz() {
        if (lzma_stream_decoder(&m_stream, MEMORY_LIMIT, LZMA_CONCATENATED) != LZMA_OK) {
            throw std::bad_alloc();
        }
    }
    ~Xz() override { lzma_end(&m_stream); }

    Progress advance(const std::uint8_t* data, std::size_t size, std::uint8_t* target, std::size_t room) override {
        if (m_complete) {
            return {0, 0, {}};
        }
        m_stream.next_in = data;
        m_stream.avail_in = size;
        m_stream.next_out = target;
        m_stream.avail_out = room;
        const lzma_ret result = lzma_code(&m_stream, size == 0 ? LZMA_FINISH : LZMA_RUN);
        m_complete = result == LZMA_STREAM_END;
        return {size - m_stream.avail_in, room - m_stream.avail_out, reason(result)};
    }

    bool complete() const override { return m_complete; }

private:
    static std::string reason(lzma_ret result) {
        switch (result) {
        case LZMA_OK:
        case LZMA_STREAM_END:
        case LZMA_BUF_ERROR: // nothing to do
            return {};
        case LZMA_MEMLIMIT_ERROR:
            return "needs too much memory";
        case LZMA_OPTIONS_ERROR:
            return "unknown kind of compression";
        case LZMA_FORMAT_ERROR:
            return "no xz data";
        default:
            return "damaged";
        }
    }

    lzma_stream m_stream = LZMA_STREAM_INIT;
    bool m_complete = false;
};

class Zstandard : public Decompressor {
public:
    static constexpr std::string_view MAGIC{"\x28\xB5\x2F\xFD", 4};

    Zstandard() : m_stream(ZSTD_createDStream()) { // it limits its memory itself
        if (m_stream == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~Zstandard() override { ZSTD_freeDStream(m_stream); }

    Progress advance(const std::uint8_t* data, std::size_t size, std::uint8_t* target, std::size_t room) override {
        if (m_complete && size == 0) {
            return {0, 0, {}};
        }
        ZSTD_inBuffer in{data, size, 0};
        ZSTD_outBuffer out{target, room, 0};
        const std::size_t result = ZSTD_decompressStream(m_stream, &out, &in);
        m_complete = result == 0;
        return {in.pos, out.pos, ZSTD_isError(result) != 0U ? ZSTD_getErrorName(result) : ""};
    }

    bool complete() const override { return m_complete; }

private:
    ZSTD_DStream* m_stream;
    bool m_complete = false;
};

} // namespace

std::unique_ptr<Decompressor> decompressorFor(const std::uint8_t* data, std::size_t size) {
    const std::string_view begin(reinterpret_cast<const char*>(data), size);
    const auto beginsWith = [begin](std::string_view magic) { return begin.substr(0, magic.size()) == magic; };
    if (beginsWith(Gzip::MAGIC)) {
        return std::make_unique<Gzip>();
    }
    if (beginsWith(Xz::MAGIC)) {
        return std::make_unique<Xz>();
    }
    if (beginsWith(Zstandard::MAGIC)) {
        return std::make_unique<Zstandard>();
    }
    return nullptr;
}

} // namespace inspect
