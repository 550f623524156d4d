#ifndef QUOR_TGINGA_APPLICATION_DESCRIPTOR_H
#define QUOR_TGINGA_APPLICATION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// What the Ginga-J and the Ginga-NCL application descriptors have in common: the parameters that the application is
/// started with. The class is abstract.
class QUOR_ISDBT_API TGingaApplicationDescriptor : public TISDBTDescriptor {
public:
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 0;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TGingaApplicationDescriptor(QUOR_U8 tag, QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(tag, data, length) {}
    /// A deep copy of @p source, which must not be null, with its tag; without data.
    explicit TGingaApplicationDescriptor(TGingaApplicationDescriptor* source);
    ~TGingaApplicationDescriptor() override = 0;

    /// Decodes the parameters into this object, behind those that it has.
    /// @param data         the bytes behind descriptor_length.
    /// @param length       their number.
    /// @param parsedLength receives the bytes of all parameters. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_STRING. May be null.
    /// @return whether the bytes were sound.
    virtual QUOR_BOOL parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The number of parameters.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The parameter at a position, from 0 in wire order, as received; empty past the end.
    std::string get(QUOR_U32 index) const;

    /// Appends a parameter.
    void add(std::string parameter);

    /// Removes the parameter at a position. @return whether there was one.
    QUOR_BOOL remove(QUOR_U32 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);
    detail::Outcome decodeBody(const detail::Bytes& body);

    detail::Row<detail::Text> m_pItems{};
};

} // namespace Quor

#endif
