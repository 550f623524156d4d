#ifndef QUOR_DETAIL_BYTES_H
#define QUOR_DETAIL_BYTES_H

#include "QuorDefs.h"

namespace Quor::detail {

class Memory;

/// A view of received bytes with bounds-checked big-endian reads. Whatever a length field on the wire claims, a read
/// outside the view touches nothing: each missing byte counts as 0. What is built from the bytes takes its memory
/// along.
class Bytes {
public:
    /// Null data make an empty view, whatever @p size says.
    Bytes(QUOR_U8* data, QUOR_U32 size, Memory& memory) : Bytes(&memory, data, data == nullptr ? 0 : size) {}

    /// A view of bytes that are known to be there.
    static Bytes of(QUOR_U8* data, QUOR_U32 size, Memory& memory) { return Bytes(&memory, data, size); }

    QUOR_U8* data() const { return m_pData; }
    QUOR_U32 size() const { return m_iSize; }
    bool empty() const { return m_iSize == 0; }

    /// Where objects, arrays and texts made from these bytes lie.
    Memory& memory() const { return *m_pMemory; }

    /// Whether the view holds @p count bytes at @p at. Neither number can overflow the check.
    bool has(QUOR_U32 at, QUOR_U32 count) const { return count <= m_iSize && at <= m_iSize - count; }

    /// The rest of the view from @p at on; empty when the view ends before it.
    Bytes from(QUOR_U32 at) const {
        const QUOR_U32 skipped = at < m_iSize ? at : m_iSize;
        return Bytes(m_pMemory, m_pData + skipped, m_iSize - skipped);
    }

    /// The view up to @p count bytes; all of it when it is shorter.
    Bytes first(QUOR_U32 count) const { return Bytes(m_pMemory, m_pData, count < m_iSize ? count : m_iSize); }

    QUOR_U8 u8(QUOR_U32 at) const { return at < m_iSize ? m_pData[at] : QUOR_U8{0}; }
    QUOR_U16 u16(QUOR_U32 at) const { return static_cast<QUOR_U16>(u8(at) << 8 | u8(at + 1)); }
    QUOR_U32 u24(QUOR_U32 at) const { return static_cast<QUOR_U32>(u8(at)) << 16 | u16(at + 1); }
    QUOR_U32 u32(QUOR_U32 at) const { return static_cast<QUOR_U32>(u16(at)) << 16 | u16(at + 2); }

    bool bit(QUOR_U32 at, unsigned number) const { return (u8(at) >> number & 1U) != 0; }

    /// A 13-bit PID under three reserved bits.
    QUOR_U16 pid(QUOR_U32 at) const { return u16(at) & 0x1FFFU; }

    /// A 12-bit length under four reserved bits.
    QUOR_U16 length12(QUOR_U32 at) const { return u16(at) & 0x0FFFU; }

private:
    Bytes(Memory* memory, QUOR_U8* data, QUOR_U32 size) : m_pData(data), m_pMemory(memory), m_iSize(size) {}

    QUOR_U8* m_pData;
    Memory* m_pMemory;
    QUOR_U32 m_iSize;
};

} // namespace Quor::detail

#endif
