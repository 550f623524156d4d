#include "detail/Family.h"

namespace Quor::detail {

void Family::removeFrom(Descriptors& descriptors, const Kind& kind) const {
    TISDBTDescriptor** displaced = &descriptors.m_pLast;
    while (find((*displaced)->getDescriptorTag())->place != kind.place) {
        displaced = &(*displaced)->m_pFormer;
    }
    const std::unique_ptr<TISDBTDescriptor> old(*displaced);
    *displaced = old->m_pFormer;
}

std::list<QUOR_U8>* Family::tags(const Descriptors& descriptors) const {
    std::unique_ptr<std::list<QUOR_U8>> result(new std::list<QUOR_U8>);
    for (const Kind* each = m_pBegin; each != m_pEnd; ++each) {
        if (descriptors.find(each->tag) != nullptr) {
            result->push_back(each->tag);
        }
    }
    return result.release();
}

Outcome refuse(const Kind& kind, QUOR_U8* data, QUOR_U32 length) {
    QUOR_U16 code = 0;
    TISDBTDescriptor::parseCommonHeader(data, length, &code, kind.minimumLength, kind.tag);
    return Outcome::failed(code);
}

TISDBTDescriptor* parseDescriptor(const Kind& kind, QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                  QUOR_U16* errorCode) {
    if (!TISDBTDescriptor::parseCommonHeader(data, length, errorCode, kind.minimumLength, kind.tag)) {
        return nullptr;
    }
    Memory heap;
    Outcome outcome = Outcome::done();
    TISDBTDescriptor* const descriptor = kind.parse(data, length, heap, outcome);
    outcome.report(parsedLength, errorCode);
    return descriptor;
}

} // namespace Quor::detail
