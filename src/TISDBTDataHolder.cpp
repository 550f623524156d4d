#include "TISDBTDataHolder.h"

#include <algorithm>

namespace Quor {

TISDBTDataHolder::TISDBTDataHolder(QUOR_U8* sectionData, QUOR_U32 dataLength, int allocateData)
    : m_pData(sectionData), m_iDataLength(dataLength), m_bAllocated(allocateData != 0) {
    if (m_bAllocated && sectionData != nullptr) {
        m_pData = new QUOR_U8[dataLength];
        std::copy_n(sectionData, dataLength, m_pData);
    }
}

TISDBTDataHolder::~TISDBTDataHolder() {
    if (m_bAllocated) {
        delete[] m_pData;
    }
}

} // namespace Quor
