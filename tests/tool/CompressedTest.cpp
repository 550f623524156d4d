#include "Process.h"
#include "Running.h"
#include "Streams.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

// Between the bytes at which a file ends, or is damaged. With sanitizers each process takes many times as long.
#ifdef QUOR_ISDBT_SANITIZE
constexpr std::size_t STEP = 389;
#else
constexpr std::size_t STEP = 97;
#endif

ByteVector gzip(const ByteVector& bytes) {
    z_stream stream{};
    constexpr int WITH_HEADER = 16;
    deflateInit2(&stream, 6, Z_DEFLATED, WITH_HEADER + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    ByteVector compressed(deflateBound(&stream, bytes.size()));
    stream.next_in = const_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = compressed.data();
    stream.avail_out = static_cast<uInt>(compressed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    compressed.resize(stream.total_out);
    deflateEnd(&stream);
    return compressed;
}

ByteVector xz(const ByteVector& bytes) {
    ByteVector compressed(lzma_stream_buffer_bound(bytes.size()));
    std::size_t size = 0;
    EXPECT_EQ(lzma_easy_buffer_encode(0, LZMA_CHECK_CRC64, nullptr, bytes.data(), bytes.size(), compressed.data(),
                                      &size, compressed.size()),
              LZMA_OK);
    compressed.resize(size);
    return compressed;
}

/// In a frame that states its window and has a checksum.
ByteVector zstandard(const ByteVector& bytes) {
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    ByteVector compressed(ZSTD_compressBound(bytes.size()) + 32);
    ZSTD_outBuffer out{compressed.data(), compressed.size(), 0};
    ZSTD_inBuffer in{bytes.data(), bytes.size(), 0};
    EXPECT_EQ(ZSTD_isError(ZSTD_compressStream2(context, &out, &in, ZSTD_e_continue)), 0U);
    EXPECT_EQ(ZSTD_compressStream2(context, &out, &in, ZSTD_e_end), 0U);
    ZSTD_freeCCtx(context);
    compressed.resize(out.pos);
    return compressed;
}

using Compress = ByteVector (*)(const ByteVector&);

/// Shorter ones are not known to be compressed.
constexpr std::size_t MAGIC_END = 6;

constexpr Compress ALL[] = {gzip, xz, zstandard};

/// Where a byte of the checksum over what is compressed stands, counted from the end.
std::size_t checksumFromEnd(Compress compress, const ByteVector& compressed) {
    if (compress == gzip) {
        return 8; // in front of the size
    }
    if (compress == xz) { // in front of the index, whose size the footer of 12 bytes tells
        return 12 + 4 * (std::size_t{compressed[compressed.size() - 8]} + 1) + 1;
    }
    return 1;
}

ByteVector repeated(const ByteVector& bytes, std::size_t count) {
    ByteVector all;
    for (std::size_t round = 0; round < count; ++round) {
        all.insert(all.end(), bytes.begin(), bytes.end());
    }
    return all;
}

std::string golden() {
    return readText(GOLDEN_FOLDER "/sample.txt");
}

Finished inspectInput(const ByteVector& bytes, std::size_t chunk = 0) {
    Start start;
    start.input = bytes;
    start.chunk = chunk;
    return inspectTables({"-"}, start);
}

} // namespace

TEST(Compressed, FilesAreReadWhateverTheirName) {
    for (const Compress compress : ALL) {
        const Finished finished = inspectBytes(compress(sampleStream()));
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.errors, "");
        EXPECT_EQ(finished.output, golden());
    }
}

TEST(Compressed, StandardInputInOddChunks) {
    for (const Compress compress : ALL) {
        for (const std::size_t chunk : {1U, 5U, 187U}) {
            const Finished finished = inspectInput(compress(sampleStream()), chunk);
            EXPECT_EQ(finished.status, 0);
            EXPECT_EQ(finished.output, golden()) << "chunks of " << chunk;
        }
    }
}

TEST(Compressed, PartsMayStandOneBehindTheOther) {
    const ByteVector stream = sampleStream();
    const std::size_t middle = 20000; // inside a packet
    for (const Compress compress : ALL) {
        const Finished finished =
            inspectBytes(join({compress(slice(stream, 0, middle)), compress(slice(stream, middle, stream.size()))}));
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.output, golden());
    }
}

TEST(Compressed, OfNothingIsEmpty) {
    for (const Compress compress : ALL) {
        const Finished finished = inspectBytes(compress({}));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: is empty\n");
    }
}

TEST(Compressed, SectionsAreKnownByTheNameBefore) {
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    for (const auto& [compress, ending] : {std::pair<Compress, const char*>{gzip, ".sec.gz"},
                                           {xz, ".sec.xz"},
                                           {zstandard, ".sec.zst"},
                                           {gzip, ".sec"}}) {
        const TemporaryFile file(compress(pat));
        const std::string path = file.path() + ending;
        std::filesystem::copy(file.path(), path);
        const Finished finished = inspectTables({path});
        std::filesystem::remove(path);
        EXPECT_EQ(finished.status, 0) << ending;
        EXPECT_THAT(finished.output, StartsWith("PAT  version 0  section 0/0  current  byte 0\n"));
        EXPECT_THAT(finished.output, EndsWith("\n1 section: 1 shown, 0 rejected, 0 CRC errors\n"));
    }
}

/// What was read is shown: that a file is cut off says nothing of its beginning.
TEST(Compressed, CutOffIsShownAsFarAsItGoes) {
    for (const Compress compress : ALL) {
        const ByteVector whole = compress(sampleStream());
        const std::size_t size = whole.size() - 1;
        const Finished finished = inspectBytes(slice(whole, 0, size));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.errors,
                  "isdbt-inspect: FILE: cannot be decompressed beyond byte " + std::to_string(size) + ": cut off\n");
        EXPECT_EQ(finished.output, golden());
    }
}

TEST(Compressed, CutOffBeforeTheFirstPacketIsNotShown) {
    for (const Compress compress : ALL) {
        const Finished finished = inspectBytes(slice(compress(sampleStream()), 0, 10));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: cannot be decompressed beyond byte 10: cut off\n");
    }
}

TEST(Compressed, CutOffAnywhereEndsWell) {
    for (const Compress compress : ALL) {
        const ByteVector whole = compress(sampleStream());
        for (std::size_t size = MAGIC_END; size < whole.size(); size += STEP) {
            const Finished finished = inspectBytes(slice(whole, 0, size));
            EXPECT_EQ(finished.status, 1) << size;
            EXPECT_THAT(finished.errors, EndsWith(": cut off\n")) << size;
        }
    }
}

/// Zstandard gives no block of 128 KiB out that it knows to be damaged.
TEST(Compressed, DamagedIsShownAsFarAsItGoes) {
    for (const auto& [compress, reason] : {std::pair<Compress, const char*>{gzip, "incorrect data check"},
                                           {xz, "damaged"},
                                           {zstandard, "Restored data doesn't match checksum"}}) {
        ByteVector bytes = compress(join({sampleStream(), repeated(StreamBuilder().null(100).bytes(), 20)}));
        bytes[bytes.size() - checksumFromEnd(compress, bytes)] ^= 0x01U;
        const Finished finished = inspectBytes(bytes);
        EXPECT_EQ(finished.status, 1);
        EXPECT_THAT(finished.errors, StartsWith("isdbt-inspect: FILE: cannot be decompressed beyond byte "));
        EXPECT_THAT(finished.errors, EndsWith(std::string(": ") + reason + '\n'));
        EXPECT_THAT(finished.output, StartsWith(golden().substr(0, golden().find("480 packets"))));
    }
}

TEST(Compressed, DamagedAnywhereEndsWell) {
    for (const Compress compress : ALL) {
        const ByteVector whole = compress(sampleStream());
        for (std::size_t at = MAGIC_END; at < whole.size(); at += STEP) {
            ByteVector bytes = whole;
            bytes[at] ^= 0x10U;
            const Finished finished = inspectBytes(bytes);
            EXPECT_THAT(finished.status, testing::AnyOf(0, 1, 3)) << at;
        }
    }
}

/// The sections of an unfinished file are those before its damage.
TEST(Compressed, CutOffSectionsAreShownAsFarAsTheyGo) {
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    const ByteVector compressed = gzip(pat);
    Start start;
    start.input = slice(compressed, 0, compressed.size() - 4);
    const Finished finished = inspectTables({"--sections", "-"}, start);
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.output, EndsWith("\n1 section: 1 shown, 0 rejected, 0 CRC errors\n"));
    EXPECT_THAT(finished.errors, EndsWith(": cut off\n"));
}

/// Files that need a gigabyte to decompress are no recordings.
TEST(Compressed, ThatNeedsTooMuchMemoryIsRefused) {
    ByteVector large = xz(sampleStream());
    const auto header = large.begin() + 12;
    const auto end = header + 4 * *header;
    const ByteVector filter = hex("21 01");
    *(std::search(header, end, filter.begin(), filter.end()) + 2) = 36; // dictionary of 1 GiB
    const std::uint32_t crc = lzma_crc32(&*header, static_cast<std::size_t>(end - header), 0);
    for (unsigned byte = 0; byte < 4; ++byte) {
        end[byte] = static_cast<QUOR_U8>(crc >> 8 * byte);
    }
    EXPECT_THAT(inspectBytes(large).errors, EndsWith(": needs too much memory\n"));

    ByteVector wide = zstandard(sampleStream());
    wide[5] = 20U << 3U; // window of 1 GiB
    EXPECT_THAT(inspectBytes(wide).errors, EndsWith(": Frame requires too much memory for decoding\n"));
}

/// What is small on the disk may be large.
TEST(Compressed, TakesNoMoreMemoryForWhatIsLarge) {
    const ByteVector packets = repeated(StreamBuilder().null(100).bytes(), 1000);
    for (const Compress compress : ALL) {
        const TemporaryFile file(repeated(compress(packets), 10));
        Running program({"--view", "stats", file.path()});
        const Finished finished = program.finish();
        EXPECT_THAT(finished.output, HasSubstr("1000000 packets of 188 bytes"));
        EXPECT_LT(program.memory(), 150'000'000U);
    }
}
