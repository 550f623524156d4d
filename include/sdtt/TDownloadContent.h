#ifndef QUOR_TDOWNLOAD_CONTENT_H
#define QUOR_TDOWNLOAD_CONTENT_H

#include "TISDBTMemory.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "detail/Descriptors.h"
#include "detail/Owned.h"
#include "sdtt/TScheduleInfo.h"

#include <list>

namespace Quor {

class TSDTTTable;

/// One content of the software download trigger table: the receiver software that is offered, to which versions, when
/// it is broadcast, and a descriptor of what is downloaded.
class QUOR_ISDBT_API TDownloadContent : public TISDBTMemory {
public:
    /// A content without schedule and descriptor, all fields 0.
    TDownloadContent() = default;
    virtual ~TDownloadContent();

    TDownloadContent(const TDownloadContent&) = delete;
    TDownloadContent& operator=(const TDownloadContent&) = delete;

    /// Parses one content.
    /// @param data             the content.
    /// @param length           number of bytes from there on; the content may take fewer.
    /// @param parseDescriptors ignored: the descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the content took: 8 and those of schedule and descriptors. May
    ///                         be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, ERROR_INVALID_ITEM for a
    ///                         bad schedule slot, or what the descriptor failed with. May be null.
    /// @return a new content, which the caller deletes, or null.
    static TDownloadContent* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                   QUOR_U16* errorCode);

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

    /// The number of schedule slots.
    QUOR_U32 getScheduleInfoSize() const { return m_pItems.size(); }

    /// The schedule slot at a position in wire order, owned by this content; null past the end.
    TScheduleInfo* getScheduleInfo(QUOR_U8 index) const { return detail::at(m_pItems, index); }

    /// Appends a schedule slot, which this content owns from now on.
    void addScheduleInfo(TScheduleInfo* item);

    /// Removes and deletes the schedule slot at a position. @return whether there was one.
    QUOR_BOOL removeScheduleInfo(QUOR_U8 index);

    /// The download content descriptor, owned by this content; null when there is none.
    TDownloadContentDescriptor* getDownloadContentDescriptor() const {
        return m_descriptors.get<TDownloadContentDescriptor>();
    }

    /// The descriptor held for a tag, owned by this content, or null. Only 0xC9 is known.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const { return m_descriptors.find(descriptorTag); }

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend struct detail::Access;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    detail::Outcome decode(const detail::Bytes& entry, QUOR_U32 stated);

    detail::Outcome decodeSchedule(const detail::Bytes& left, QUOR_U16 scheduleLength);

    TSDTTTable* m_pParentSDTTTable = nullptr;
    QUOR_U8 m_iGroup = 0;
    QUOR_U16 m_iTargetVersion = 0;
    QUOR_U16 m_iNewVersion = 0;
    QUOR_U8 m_iDownloadLevel = 0;
    QUOR_U8 m_iVersionIndicator = 0;
    QUOR_U16 m_iScheduleTimeShiftInfo = 0;
    detail::Items<TScheduleInfo> m_pItems{};
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
