#include "TISDBTDataHolder.h"

#include <algorithm>

namespace Quor {

TISDBTDataHolder::TISDBTDataHolder(QUOR_U8* data, QUOR_U32 length, int allocateData)
    : m_pData(data), m_iDataLength(length), m_bAllocated(allocateData != 0) {
    if (m_bAllocated && data != nullptr) {
        m_pData = static_cast<QUOR_U8*>(TISDBTMemory::operator new(length));
        std::copy_n(data, length, m_pData);
    }
}

TISDBTDataHolder::~TISDBTDataHolder() {
    if (m_bAllocated) {
        TISDBTMemory::operator delete(m_pData);
    }
}

} // namespace Quor
