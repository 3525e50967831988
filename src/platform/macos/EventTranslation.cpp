#include "platform/macos/EventTranslation.h"

#include "platform/macos/CFConversion.h"

namespace Stemhaven {

namespace {

static_assert(std::uint32_t{kFSEventStreamEventFlagMustScanSubDirs} == FileEvent::MustScanSubDirs);
static_assert(std::uint32_t{kFSEventStreamEventFlagMount} == FileEvent::Mount);
static_assert(std::uint32_t{kFSEventStreamEventFlagUnmount} == FileEvent::Unmount);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemCreated} == FileEvent::ItemCreated);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemRemoved} == FileEvent::ItemRemoved);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemRenamed} == FileEvent::ItemRenamed);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemModified} == FileEvent::ItemModified);

/// As the program names it. The system spells names as they are stored, with accents composed or decomposed;
/// what Qt reads of folders, and so every recorded path and every root, has them composed.
QString pathOf(CFDictionaryRef data) {
    QString path =
        textIn(data, kFSEventStreamEventExtendedDataPathKey).normalized(QString::NormalizationForm_C);
    if (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

} // namespace

QList<FileEvent> toFileEvents(
    std::size_t count, CFArrayRef extendedData, const FSEventStreamEventFlags* flags,
    const FSEventStreamEventId* ids) {
    QList<FileEvent> events;
    for (std::size_t i = 0; i < count; ++i) {
        const auto* data =
            static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(extendedData, static_cast<CFIndex>(i)));
        FileEvent event;
        event.path = pathOf(data);
        event.fileID = numberIn(data, kFSEventStreamEventExtendedFileIDKey);
        event.docID = numberIn(data, kFSEventStreamEventExtendedDocIDKey);
        event.flags = flags[i];
        event.eventID = ids[i];
        events.append(event);
    }
    return events;
}

} // namespace Stemhaven
