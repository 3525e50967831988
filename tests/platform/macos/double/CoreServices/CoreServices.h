#pragma once

// What the program uses of the macOS header of this name, for machines that have none. MacosDouble.cpp stands
// behind it.

#include <cstddef>
#include <cstdint>

using Boolean = unsigned char;
using UniChar = unsigned short;
using CFIndex = long;
using CFTimeInterval = double;

using CFTypeRef = const void*;
using CFAllocatorRef = const struct CFAllocatorDouble*;
using CFStringRef = const struct CFStringDouble*;
using CFNumberRef = const struct CFNumberDouble*;
using CFArrayRef = const struct CFArrayDouble*;
using CFDictionaryRef = const struct CFDictionaryDouble*;

struct CFRange {
    CFIndex location;
    CFIndex length;
};

inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
    return {location, length};
}

void CFRelease(CFTypeRef object);

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex count);
CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

enum CFNumberType : CFIndex { kCFNumberSInt64Type = 4 };

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

struct CFArrayCallBacks {
    bool retainsElements;
};

extern const CFArrayCallBacks kCFTypeArrayCallBacks;
CFArrayRef CFArrayCreate(
    CFAllocatorRef allocator, const void** values, CFIndex count, const CFArrayCallBacks* callBacks);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);

using FSEventStreamRef = struct FSEventStreamDouble*;
using ConstFSEventStreamRef = const struct FSEventStreamDouble*;
using FSEventStreamCreateFlags = std::uint32_t;
using FSEventStreamEventFlags = std::uint32_t;
using FSEventStreamEventId = std::uint64_t;

enum : FSEventStreamCreateFlags {
    kFSEventStreamCreateFlagUseCFTypes = 0x1,
    kFSEventStreamCreateFlagNoDefer = 0x2,
    kFSEventStreamCreateFlagFileEvents = 0x10,
    kFSEventStreamCreateFlagUseExtendedData = 0x40,
    kFSEventStreamCreateFlagFullHistory = 0x80,
    kFSEventStreamCreateWithDocID = 0x100
};

enum : FSEventStreamEventFlags {
    kFSEventStreamEventFlagMustScanSubDirs = 0x1,
    kFSEventStreamEventFlagMount = 0x40,
    kFSEventStreamEventFlagUnmount = 0x80,
    kFSEventStreamEventFlagItemCreated = 0x100,
    kFSEventStreamEventFlagItemRemoved = 0x200,
    kFSEventStreamEventFlagItemRenamed = 0x800,
    kFSEventStreamEventFlagItemModified = 0x1000
};

enum : FSEventStreamEventId { kFSEventStreamEventIdSinceNow = 0xFFFFFFFFFFFFFFFFU };

extern const CFStringRef kFSEventStreamEventExtendedDataPathKey;
extern const CFStringRef kFSEventStreamEventExtendedFileIDKey;
extern const CFStringRef kFSEventStreamEventExtendedDocIDKey;

struct FSEventStreamContext {
    CFIndex version;
    void* info;
    const void* (*retain)(const void*);
    void (*release)(const void*);
    CFStringRef (*copyDescription)(const void*);
};

using FSEventStreamCallback = void (*)(
    ConstFSEventStreamRef stream, void* info, std::size_t numEvents, void* eventPaths,
    const FSEventStreamEventFlags* flags, const FSEventStreamEventId* ids);

FSEventStreamRef FSEventStreamCreate(
    CFAllocatorRef allocator, FSEventStreamCallback callback, FSEventStreamContext* context, CFArrayRef paths,
    FSEventStreamEventId sinceWhen, CFTimeInterval latency, FSEventStreamCreateFlags flags);
void FSEventStreamSetDispatchQueue(FSEventStreamRef stream, struct DispatchQueueDouble* queue);
Boolean FSEventStreamStart(FSEventStreamRef stream);
void FSEventStreamStop(FSEventStreamRef stream);
void FSEventStreamInvalidate(FSEventStreamRef stream);
void FSEventStreamRelease(FSEventStreamRef stream);
FSEventStreamEventId FSEventsGetCurrentEventId();
