#ifndef QUOR_TDOWNLOAD_CONTENT_H
#define QUOR_TDOWNLOAD_CONTENT_H

#include "sdtt/TScheduleInfo.h"

#include <list>
#include <memory>

namespace Quor {

class TDownloadContentDescriptor;
class TISDBTDescriptor;
class TSDTTTable;

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// One content of the software download trigger table: the receiver software that is offered, to which versions, when
/// it is broadcast, and a descriptor of what is downloaded.
class QUOR_ISDBT_API TDownloadContent {
public:
    /// A content without schedule and descriptor, all fields 0.
    TDownloadContent();
    virtual ~TDownloadContent();

    /// Parses one content.
    /// @param sectionData      the content.
    /// @param dataLength       number of bytes from there on; the content may take fewer.
    /// @param parseDescriptors ignored: the descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the content took: 8 and those of schedule and descriptors. May
    ///                         be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, ERROR_INVALID_ITEM for a
    ///                         bad schedule slot, or what the descriptor failed with. May be null.
    /// @return a new content, which the caller deletes, or null.
    static TDownloadContent* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int parseDescriptors,
                                   QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// Links the table that the content belongs to. Parsing leaves the link null; the table is not owned.
    void setParentSDTTTable(TSDTTTable* parent) { m_pParentSDTTTable = parent; }

    /// group, 0 to 15.
    QUOR_U8 getGroup() const { return m_iGroup; }

    /// target_version, 0 to 4095: the version that is to be replaced, together with getVersionIndicator().
    QUOR_U16 getTargetVersion() const { return m_iTargetVersion; }

    /// new_version, 0 to 4095.
    QUOR_U16 getNewVersion() const { return m_iNewVersion; }

    /// download_level, 0 to 3.
    QUOR_U8 getDownloadLevel() const { return m_iDownloadLevel; }

    /// version_indicator, 0 to 3: how target_version is to be compared.
    QUOR_U8 getVersionIndicator() const { return m_iVersionIndicator; }

    /// schedule_time_shift_information, 0 to 15.
    QUOR_U16 getScheduleTimeShiftInfo() const { return m_iScheduleTimeShiftInfo; }

    /// The download content descriptor, owned by this content; null when there is none.
    TDownloadContentDescriptor* getDownloadContentDescriptor() const { return m_pDownloadContentDesc.get(); }

    /// The descriptor held for a tag, owned by this content, or null. Only 0xC9 is known.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const;

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

    /// The number of schedule slots.
    QUOR_U32 getScheduleInfoSize() const;

    /// The schedule slot at a position in wire order, owned by this content; null past the end.
    TScheduleInfo* getScheduleInfo(QUOR_U8 index) const;

    /// Appends a schedule slot, which this content owns from now on.
    void addScheduleInfo(TScheduleInfo* item);

    /// Removes and deletes the schedule slot at a position. @return whether there was one.
    QUOR_BOOL removeScheduleInfo(QUOR_U8 index);

private:
    friend class TSDTTTable;
    struct Kinds;

    static TDownloadContent* parse(detail::Bytes left, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                   QUOR_U16* errorCode);
    detail::Outcome parseFields(detail::Bytes left, QUOR_U32 dataLength, QUOR_U16* errorCode);
    detail::Outcome parseSchedule(detail::Bytes left, QUOR_U16 scheduleLength, QUOR_U16* errorCode);
    detail::Outcome parseLoop(detail::Bytes left, QUOR_U32& remaining, QUOR_U16 loopLength, QUOR_U16* errorCode);

    TSDTTTable* m_pParentSDTTTable;
    QUOR_U8 m_iGroup;
    QUOR_U16 m_iTargetVersion;
    QUOR_U16 m_iNewVersion;
    QUOR_U8 m_iDownloadLevel;
    QUOR_U8 m_iVersionIndicator;
    QUOR_U16 m_iScheduleTimeShiftInfo;
    std::unique_ptr<TDownloadContentDescriptor> m_pDownloadContentDesc;
    std::list<std::unique_ptr<TScheduleInfo>> m_pItems;
};

} // namespace Quor

#endif
