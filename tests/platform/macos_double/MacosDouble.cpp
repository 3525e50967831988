#include "MacosDouble.h"

#include <CoreServices/CoreServices.h>
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <dispatch/dispatch.h>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

/// One object with its reference count. Constants are not counted and never end.
struct CFObject {
    explicit CFObject(bool isConstant = false) : constant(isConstant) {
        if (!constant)
            ++live;
    }

    virtual ~CFObject() {
        if (!constant)
            --live;
    }

    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;

    static inline std::atomic<int> live = 0;
    const bool constant;
    mutable std::atomic<int> references = 1;
};

} // namespace

struct CFStringDouble : CFObject {
    explicit CFStringDouble(QString value, bool isConstant = false)
        : CFObject(isConstant),
          text(std::move(value)) {}

    const QString text;
};

struct CFNumberDouble : CFObject {
    explicit CFNumberDouble(std::int64_t number) : value(number) {}

    const std::int64_t value;
};

struct CFArrayDouble : CFObject {
    std::vector<const CFObject*> elements;
    ~CFArrayDouble() override;
};

struct CFDictionaryDouble : CFObject {
    std::map<QString, const CFObject*> entries;
    ~CFDictionaryDouble() override;
};

struct DispatchQueueDouble {};

struct FSEventStreamDouble : CFObject {
    FSEventStreamCallback callback = nullptr;
    FSEventStreamContext context{};
    CFArrayRef paths = nullptr;
};

namespace {

struct System {
    std::mutex mutex;
    QStringList calls;
    MacosDouble::Creation creation;
    bool failsCreation = false;
    bool failsStart = false;
    bool keepsContexts = false;
    std::atomic<std::uint64_t> currentEventID = 0;
    std::atomic<int> heldContexts = 0;
    FSEventStreamCallback callback = nullptr;
    FSEventStreamContext context{};
    std::vector<FSEventStreamContext> keptContexts;

    void record(const QString& call) {
        const std::lock_guard lock(mutex);
        calls.append(call);
    }
};

System& macos() {
    static System system;
    return system;
}

DispatchQueueDouble defaultQueue;
DispatchQueueDouble otherQueue;

const CFObject* objectAt(CFTypeRef object) {
    return static_cast<const CFObject*>(object);
}

const void* retained(const CFObject* object) {
    ++object->references;
    return object;
}

void releaseContext(const FSEventStreamContext& context) {
    --macos().heldContexts;
    context.release(context.info);
}

CFDictionaryRef makeData(const MacosDouble::Event& event) {
    auto* data = new CFDictionaryDouble;
    if (event.path)
        data->entries[QStringLiteral("path")] = new CFStringDouble(*event.path);
    if (event.fileID)
        data->entries[QStringLiteral("fileID")] = new CFNumberDouble(*event.fileID);
    if (event.docID)
        data->entries[QStringLiteral("docID")] = new CFNumberDouble(*event.docID);
    return data;
}

} // namespace

CFArrayDouble::~CFArrayDouble() {
    for (const auto* element : elements)
        CFRelease(element);
}

CFDictionaryDouble::~CFDictionaryDouble() {
    for (const auto& [key, value] : entries)
        CFRelease(value);
}

const CFArrayCallBacks kCFTypeArrayCallBacks{true};

void CFRelease(CFTypeRef object) {
    if (object == nullptr)
        std::abort();
    const auto* counted = objectAt(object);
    if (!counted->constant && --counted->references == 0)
        delete counted;
}

CFStringRef constantStringDouble(const char* ascii) {
    static std::mutex mutex;
    static std::map<std::string, CFStringDouble> constants;
    const std::lock_guard lock(mutex);
    return &constants.try_emplace(ascii, QString::fromLatin1(ascii), true).first->second;
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
    return new CFStringDouble(QString(reinterpret_cast<const QChar*>(characters), count));
}

CFIndex CFStringGetLength(CFStringRef string) {
    return string->text.size();
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    if (range.location < 0 || range.location + range.length > string->text.size())
        std::abort();
    std::copy_n(string->text.utf16() + range.location, range.length, buffer);
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberSInt64Type)
        std::abort();
    *static_cast<std::int64_t*>(value) = number->value;
    return 1;
}

CFArrayRef
CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count, const CFArrayCallBacks* callBacks) {
    if (callBacks != &kCFTypeArrayCallBacks)
        std::abort();
    auto* array = new CFArrayDouble;
    for (CFIndex i = 0; i < count; ++i)
        array->elements.push_back(static_cast<const CFObject*>(retained(objectAt(values[i]))));
    return array;
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return array->elements.at(static_cast<std::size_t>(index));
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const auto entry = dictionary->entries.find(static_cast<CFStringRef>(key)->text);
    return entry == dictionary->entries.end() ? nullptr : entry->second;
}

FSEventStreamRef FSEventStreamCreate(
    CFAllocatorRef, FSEventStreamCallback callback, FSEventStreamContext* context, CFArrayRef paths,
    FSEventStreamEventId sinceWhen, CFTimeInterval latency, FSEventStreamCreateFlags flags) {
    auto& system = macos();
    system.record(QStringLiteral("FSEventStreamCreate"));
    system.creation = {{}, sinceWhen, latency, flags};
    for (const auto* path : paths->elements)
        system.creation.paths.append(static_cast<const CFStringDouble*>(path)->text);
    if (system.failsCreation)
        return nullptr;
    auto* stream = new FSEventStreamDouble;
    stream->callback = callback;
    stream->context = *context;
    stream->context.info = const_cast<void*>(context->retain(context->info));
    stream->paths = static_cast<CFArrayRef>(retained(paths));
    ++system.heldContexts;
    system.callback = callback;
    system.context = stream->context;
    return stream;
}

void FSEventStreamSetDispatchQueue(FSEventStreamRef, dispatch_queue_t queue) {
    QString name = QStringLiteral("other");
    if (queue == nullptr)
        name = QStringLiteral("null");
    else if (queue == &defaultQueue)
        name = QStringLiteral("default");
    macos().record(QStringLiteral("FSEventStreamSetDispatchQueue ") + name);
}

Boolean FSEventStreamStart(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamStart"));
    return macos().failsStart ? 0 : 1;
}

void FSEventStreamStop(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamStop"));
}

void FSEventStreamInvalidate(FSEventStreamRef) {
    macos().record(QStringLiteral("FSEventStreamInvalidate"));
}

void FSEventStreamRelease(FSEventStreamRef stream) {
    auto& system = macos();
    CFRelease(stream->paths);
    if (system.keepsContexts)
        system.keptContexts.push_back(stream->context);
    else
        releaseContext(stream->context);
    CFRelease(stream);
    // Last, so that a thread which waits for it finds everything done.
    system.record(QStringLiteral("FSEventStreamRelease"));
}

FSEventStreamEventId FSEventsGetCurrentEventId() {
    return macos().currentEventID;
}

dispatch_queue_t dispatch_get_global_queue(std::intptr_t identifier, std::uintptr_t flags) {
    return identifier == DISPATCH_QUEUE_PRIORITY_DEFAULT && flags == 0 ? &defaultQueue : &otherQueue;
}

namespace MacosDouble {

void reset() {
    auto& system = macos();
    const std::lock_guard lock(system.mutex);
    if (CFObject::live != 0 || system.heldContexts != 0)
        std::abort();
    system.calls.clear();
    system.creation = {};
    system.failsCreation = system.failsStart = system.keepsContexts = false;
    system.currentEventID = 0;
}

QStringList calls() {
    const std::lock_guard lock(macos().mutex);
    return macos().calls;
}

Creation lastCreation() {
    return macos().creation;
}

int liveObjects() {
    return CFObject::live;
}

int heldContexts() {
    return macos().heldContexts;
}

void failCreation() {
    macos().failsCreation = true;
}

void failStart() {
    macos().failsStart = true;
}

void setCurrentEventID(std::uint64_t id) {
    macos().currentEventID = id;
}

void keepContexts() {
    macos().keepsContexts = true;
}

void letGo() {
    for (const auto& context : std::exchange(macos().keptContexts, {}))
        releaseContext(context);
}

void fire(const QList<Event>& events) {
    auto& system = macos();
    auto* array = new CFArrayDouble;
    std::vector<FSEventStreamEventFlags> flags;
    std::vector<FSEventStreamEventId> ids;
    for (const auto& event : events) {
        array->elements.push_back(makeData(event));
        flags.push_back(event.flags);
        ids.push_back(event.id);
    }
    system.callback(nullptr, system.context.info, flags.size(), array, flags.data(), ids.data());
    CFRelease(array);
}

} // namespace MacosDouble
