#ifndef QUOR_TGINGA_APPLICATION_LOCATION_DESCRIPTOR_H
#define QUOR_TGINGA_APPLICATION_LOCATION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// What the Ginga-J and the Ginga-NCL application location descriptors have in common: where the application's code
/// lies in its file system, and what to start. The class is abstract.
class QUOR_ISDBT_API TGingaApplicationLocationDescriptor : public TISDBTDescriptor {
public:
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TGingaApplicationLocationDescriptor(QUOR_U8 tag, QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(tag, data, length) {}
    /// A descriptor without data.
    TGingaApplicationLocationDescriptor(QUOR_U8 tag, std::string baseDirectory, std::string classpathExtension,
                                        std::string initialClass);
    /// A copy of @p source, which must not be null, with its tag; without data.
    explicit TGingaApplicationLocationDescriptor(TGingaApplicationLocationDescriptor* source);
    ~TGingaApplicationLocationDescriptor() override = 0;

    /// Decodes the location into this object.
    /// @param data         the bytes behind descriptor_length.
    /// @param length       their number.
    /// @param parsedLength receives the bytes of the base directory and those of the classpath extension, the latter
    ///                     twice when there is an initial class; neither length bytes nor initial class count. May be
    ///                     null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, ERROR_INVALID_DESCRIPTOR_LENGTH or
    ///                     ERROR_INVALID_STRING. May be null.
    /// @return whether the bytes were sound.
    virtual QUOR_BOOL parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// base_directory, as received; empty when absent.
    std::string getBaseDirectory() const { return m_sBaseDirectory; }

    /// classpath_extension, as received; empty when absent.
    std::string getClasspathExtension() const { return m_sClasspathExt; }

    /// initial_class, for Ginga-NCL the document to start, as received; empty when absent.
    std::string getInitialClass() const { return m_sInitialClass; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);
    detail::Outcome decodeBody(const detail::Bytes& body);

    detail::Text m_sBaseDirectory{};
    detail::Text m_sClasspathExt{};
    detail::Text m_sInitialClass{};
};

} // namespace Quor

#endif
