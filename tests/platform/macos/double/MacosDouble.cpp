#include "MacosDouble.h"

#include <CoreServices/CoreServices.h>
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <dispatch/dispatch.h>
#include <mutex>
#include <utility>
#include <vector>

struct DispatchQueueDouble {};

namespace {

using MacosDouble::Fault;

/// Stands behind a reference of any type.
struct Object {
    mutable std::atomic<int> references = 1;
    QString text;
    std::int64_t number = 0;
    /// By an array, a dictionary or a stream.
    std::vector<CFTypeRef> held;
    /// Of a dictionary, in the order of what it holds.
    QStringList keys;
};

struct System {
    std::mutex mutex;
    QStringList calls;
    Fault fault = Fault::None;
    std::atomic<int> liveObjects = 0;
    std::atomic<int> heldContexts = 0;
    FSEventStreamCallback callback = nullptr;
    FSEventStreamContext context{};

    void record(const QString& call) {
        const std::lock_guard lock(mutex);
        calls.append(call);
    }
};

System& macos() {
    static System system;
    return system;
}

const Object& objectAt(CFTypeRef reference) {
    return *static_cast<const Object*>(reference);
}

template <typename Ref>
Ref referenceTo(Object* object) {
    return static_cast<Ref>(static_cast<void*>(object));
}

Object* make() {
    ++macos().liveObjects;
    return new Object;
}

/// Lives to the end, so nothing may release it.
CFStringRef constant(const char* text) {
    auto* string = new Object;
    string->text = QString::fromLatin1(text);
    return referenceTo<CFStringRef>(string);
}

CFTypeRef retained(CFTypeRef reference) {
    ++objectAt(reference).references;
    return reference;
}

void releaseContext() {
    --macos().heldContexts;
    macos().context.release(macos().context.info);
}

Object* makeData(const Stemhaven::FileEvent& event) {
    auto* data = make();
    const auto put = [&](const char* key) {
        data->keys.append(QString::fromLatin1(key));
        auto* value = make();
        data->held.push_back(value);
        return value;
    };
    if (!event.path.isEmpty())
        put("path")->text = event.path;
    if (event.fileID != 0)
        put("fileID")->number = static_cast<std::int64_t>(event.fileID);
    if (event.docID != 0)
        put("docID")->number = static_cast<std::int64_t>(event.docID);
    return data;
}

} // namespace

const CFArrayCallBacks kCFTypeArrayCallBacks{true};
const CFStringRef kFSEventStreamEventExtendedDataPathKey = constant("path");
const CFStringRef kFSEventStreamEventExtendedFileIDKey = constant("fileID");
const CFStringRef kFSEventStreamEventExtendedDocIDKey = constant("docID");

void CFRelease(CFTypeRef object) {
    if (object == nullptr)
        std::abort();
    if (--objectAt(object).references == 0) {
        for (CFTypeRef each : objectAt(object).held)
            CFRelease(each);
        --macos().liveObjects;
        delete &objectAt(object);
    }
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
    auto* string = make();
    string->text = QString(reinterpret_cast<const QChar*>(characters), count);
    return referenceTo<CFStringRef>(string);
}

CFIndex CFStringGetLength(CFStringRef string) {
    return objectAt(string).text.size();
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    const auto& text = objectAt(string).text;
    if (range.location < 0 || range.location + range.length > text.size())
        std::abort();
    std::copy_n(text.utf16() + range.location, range.length, buffer);
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberSInt64Type)
        std::abort();
    *static_cast<std::int64_t*>(value) = objectAt(number).number;
    return 1;
}

CFArrayRef
CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count, const CFArrayCallBacks* callBacks) {
    if (callBacks != &kCFTypeArrayCallBacks)
        std::abort();
    auto* array = make();
    std::transform(values, values + count, std::back_inserter(array->held), retained);
    return referenceTo<CFArrayRef>(array);
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return objectAt(array).held.at(static_cast<std::size_t>(index));
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const auto index = objectAt(dictionary).keys.indexOf(objectAt(key).text);
    return index < 0 ? nullptr : objectAt(dictionary).held.at(static_cast<std::size_t>(index));
}

FSEventStreamRef FSEventStreamCreate(
    CFAllocatorRef, FSEventStreamCallback callback, FSEventStreamContext* context, CFArrayRef paths,
    FSEventStreamEventId sinceWhen, CFTimeInterval latency, FSEventStreamCreateFlags flags) {
    auto& system = macos();
    QStringList texts;
    for (CFTypeRef path : objectAt(paths).held)
        texts.append(objectAt(path).text);
    system.record(QStringLiteral("FSEventStreamCreate %1 since %2, latency %3, flags %4")
                      .arg(texts.join(QLatin1Char(' ')))
                      .arg(sinceWhen)
                      .arg(latency)
                      .arg(flags));
    if (system.fault == Fault::Creation)
        return nullptr;
    if (system.heldContexts != 0)
        std::abort();
    auto* stream = make();
    stream->held.push_back(retained(paths));
    ++system.heldContexts;
    system.callback = callback;
    system.context = *context;
    system.context.info = const_cast<void*>(context->retain(context->info));
    return referenceTo<FSEventStreamRef>(stream);
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

void FSEventStreamRelease(FSEventStreamRef stream) {
    if (macos().fault != Fault::ContextIsKept)
        releaseContext();
    CFRelease(stream);
    // Last, so that a thread which waits for it finds everything done.
    macos().record(QStringLiteral("FSEventStreamRelease"));
}

FSEventStreamEventId FSEventsGetCurrentEventId() {
    return MacosDouble::currentEventID;
}

dispatch_queue_t dispatch_get_global_queue(std::intptr_t identifier, std::uintptr_t flags) {
    if (identifier != DISPATCH_QUEUE_PRIORITY_DEFAULT || flags != 0)
        std::abort();
    static DispatchQueueDouble queue;
    return &queue;
}

namespace MacosDouble {

void reset(Fault fault) {
    auto& system = macos();
    const std::lock_guard lock(system.mutex);
    if (system.liveObjects != 0 || system.heldContexts != 0)
        std::abort();
    system.calls.clear();
    system.fault = fault;
}

void letGo() {
    if (std::exchange(macos().fault, Fault::None) == Fault::ContextIsKept)
        releaseContext();
}

QStringList calls() {
    const std::lock_guard lock(macos().mutex);
    return macos().calls;
}

int liveObjects() {
    return macos().liveObjects;
}

int heldContexts() {
    return macos().heldContexts;
}

void fire(const QList<Stemhaven::FileEvent>& events) {
    auto* array = make();
    std::vector<FSEventStreamEventFlags> flags;
    std::vector<FSEventStreamEventId> ids;
    for (const auto& event : events) {
        array->held.push_back(makeData(event));
        flags.push_back(event.flags);
        ids.push_back(event.eventID);
    }
    macos().callback(nullptr, macos().context.info, flags.size(), array, flags.data(), ids.data());
    CFRelease(array);
}

} // namespace MacosDouble
