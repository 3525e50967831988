#include "MacosDouble.h"

#include <QVariant>

#include <CoreServices/CoreServices.h>
#include <algorithm>
#include <deque>
#include <dispatch/dispatch.h>
#include <mutex>
#include <utility>
#include <vector>

namespace {

using MacosDouble::Fault;

struct System {
    std::mutex mutex;
    QStringList calls;
    Fault fault = Fault::None;
    FSEventStreamCallback callback = nullptr;
    FSEventStreamContext context{};
    /// Stand behind the references of all types, to the end.
    std::deque<QVariant> objects;

    void record(const QString& call) {
        const std::lock_guard lock(mutex);
        calls.append(call);
    }
};

System& macos() {
    static System system;
    return system;
}

const QVariant& valueOf(CFTypeRef reference) {
    return *static_cast<const QVariant*>(reference);
}

template <typename Ref = CFTypeRef>
Ref referenceTo(const QVariant& value) {
    const std::lock_guard lock(macos().mutex);
    return static_cast<Ref>(static_cast<void*>(&macos().objects.emplace_back(value)));
}

void releaseContext() {
    macos().context.release(macos().context.info);
}

QVariantMap dataOf(const Stemhaven::FileEvent& event) {
    QVariantMap data;
    if (!event.path.isEmpty())
        data[QStringLiteral("path")] = event.path;
    if (event.fileID != 0)
        data[QStringLiteral("fileID")] = static_cast<qint64>(event.fileID);
    if (event.docID != 0)
        data[QStringLiteral("docID")] = static_cast<qint64>(event.docID);
    return data;
}

} // namespace

const CFArrayCallBacks kCFTypeArrayCallBacks{true};
const CFStringRef kFSEventStreamEventExtendedDataPathKey = referenceTo<CFStringRef>(QStringLiteral("path"));
const CFStringRef kFSEventStreamEventExtendedFileIDKey = referenceTo<CFStringRef>(QStringLiteral("fileID"));
const CFStringRef kFSEventStreamEventExtendedDocIDKey = referenceTo<CFStringRef>(QStringLiteral("docID"));

void CFRelease(CFTypeRef) {}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
    return referenceTo<CFStringRef>(QString(reinterpret_cast<const QChar*>(characters), count));
}

CFIndex CFStringGetLength(CFStringRef string) {
    return valueOf(string).toString().size();
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    std::copy_n(valueOf(string).toString().utf16() + range.location, range.length, buffer);
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType, void* value) {
    *static_cast<std::int64_t*>(value) = valueOf(number).toLongLong();
    return 1;
}

CFArrayRef CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count, const CFArrayCallBacks*) {
    QVariantList list;
    std::transform(values, values + count, std::back_inserter(list), valueOf);
    return referenceTo<CFArrayRef>(list);
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return referenceTo(valueOf(array).toList().at(index));
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const QVariant value = valueOf(dictionary).toMap().value(valueOf(key).toString());
    return value.isValid() ? referenceTo(value) : nullptr;
}

FSEventStreamRef FSEventStreamCreate(
    CFAllocatorRef, FSEventStreamCallback callback, FSEventStreamContext* context, CFArrayRef paths,
    FSEventStreamEventId sinceWhen, CFTimeInterval latency, FSEventStreamCreateFlags flags) {
    auto& system = macos();
    system.record(QStringLiteral("FSEventStreamCreate %1 since %2, latency %3, flags %4")
                      .arg(valueOf(paths).toStringList().join(QLatin1Char(' ')))
                      .arg(sinceWhen)
                      .arg(latency)
                      .arg(flags));
    if (system.fault == Fault::Creation)
        return nullptr;
    system.callback = callback;
    system.context = *context;
    system.context.info = const_cast<void*>(context->retain(context->info));
    return referenceTo<FSEventStreamRef>(QVariant());
}

void FSEventStreamSetDispatchQueue(FSEventStreamRef, dispatch_queue_t queue) {
    const auto name = queue == nullptr ? QStringLiteral("null") : QStringLiteral("default");
    macos().record(QStringLiteral("FSEventStreamSetDispatchQueue ") + name);
}

Boolean FSEventStreamStart(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamStart"));
    return macos().fault == Fault::Start ? 0 : 1;
}

void FSEventStreamStop(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamStop"));
}

void FSEventStreamInvalidate(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamInvalidate"));
}

void FSEventStreamRelease(FSEventStreamRef) {
    if (macos().fault != Fault::ContextIsKept)
        releaseContext();
    // Last, so that a thread which waits for it finds everything done.
    macos().record(QStringLiteral("FSEventStreamRelease"));
}

FSEventStreamEventId FSEventsGetCurrentEventId() {
    return 1'234'567'890'123;
}

dispatch_queue_t dispatch_get_global_queue(std::intptr_t, std::uintptr_t) {
    return referenceTo<dispatch_queue_t>(QVariant());
}

namespace MacosDouble {

void reset(Fault fault) {
    const std::lock_guard lock(macos().mutex);
    macos().calls.clear();
    macos().fault = fault;
}

void letGo() {
    if (std::exchange(macos().fault, Fault::None) == Fault::ContextIsKept)
        releaseContext();
}

QStringList calls() {
    const std::lock_guard lock(macos().mutex);
    return macos().calls;
}

void fire(const QList<Stemhaven::FileEvent>& events) {
    QVariantList data;
    std::vector<FSEventStreamEventFlags> flags;
    std::vector<FSEventStreamEventId> ids;
    for (const auto& event : events) {
        data.append(QVariant(dataOf(event)));
        flags.push_back(event.flags);
        ids.push_back(event.eventID);
    }
    macos().callback(
        nullptr, macos().context.info, flags.size(), referenceTo<void*>(data), flags.data(), ids.data());
}

} // namespace MacosDouble
