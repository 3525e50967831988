#include "platform/macos/EventTranslation.h"

#include "platform/macos/CFConversion.h"

namespace Stemhaven {

namespace {

static_assert(std::uint32_t{kFSEventStreamEventFlagMustScanSubDirs} == FileEvent::MustScanSubDirs);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemCreated} == FileEvent::ItemCreated);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemRemoved} == FileEvent::ItemRemoved);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemRenamed} == FileEvent::ItemRenamed);
static_assert(std::uint32_t{kFSEventStreamEventFlagItemModified} == FileEvent::ItemModified);

QString withoutTrailingSlash(QString path) {
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
        event.path = withoutTrailingSlash(textIn(data, kFSEventStreamEventExtendedDataPathKey));
        event.fileID = numberIn(data, kFSEventStreamEventExtendedFileIDKey);
        event.docID = numberIn(data, kFSEventStreamEventExtendedDocIDKey);
        event.flags = flags[i];
        event.eventID = ids[i];
        events.append(event);
    }
    return events;
}

} // namespace Stemhaven
