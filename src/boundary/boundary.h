/*
 * The records that cross the boundary between the host's core process and the
 * plug-in library. Plain C, usable from a C host; every record is packed.
 *
 * Field order and field widths follow the platform's 32-bit layout; on 64-bit
 * builds every pointer-sized field (data pointers, texts, function pointers)
 * takes the native pointer width, while opaque words stay 32-bit. The
 * static_asserts at the end pin both layouts.
 *
 * Threads: the host calls the plug-in on its own thread, one call at a time
 * ([host-thread]); GetMemoryStats may be called from any thread.
 */
#ifndef TAV_BOUNDARY_BOUNDARY_H
#define TAV_BOUNDARY_BOUNDARY_H

#include <stddef.h>
#include <stdint.h>

#ifndef __cplusplus
#include <stdbool.h>
#endif

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* ---- Values ------------------------------------------------------------ */

enum HostValueTag {
    HostValueNone = 0,
    HostValueBool = 1,
    HostValueSigned = 2,
    HostValueUnsigned = 3,
    HostValueDouble = 4,
    HostValueBorrowedString = 5,
    HostValueOwnedString = 6,
    HostValueBorrowedBytes = 7,
    HostValueOwnedBytes = 8,
    HostValueArray = 9,
    HostValueObject = 10
};

/* A tagged value. Owned payloads (tags 6, 8, 9, 10) belong to the side that
 * filled the record and are freed by the release function that travels with
 * the record carrying the value. */
typedef struct HostValue {
    uint32_t tag; /* a HostValueTag */
    union {
        uint8_t boolean;  /* tag 1 */
        int64_t integer;  /* tag 2 */
        uint64_t natural; /* tag 3 */
        double real;      /* tag 4 */
        struct {
            const void* data; /* text, bytes, HostValue items or HostObjectMember items */
            uint32_t length;  /* bytes (tags 6 to 8) or item count (tags 9, 10) */
        } ref;
    } payload;
} HostValue;

/* One member of an object value (tag 10). */
typedef struct HostObjectMember {
    const char* name; /* zero-terminated; owned by the member when ownsName is 1 */
    HostValue value;
    uint8_t ownsName;
} HostObjectMember;

/* One argument of a request: a positional argument has a null name. */
typedef struct HostArgument {
    const char* name;
    HostValue value;
} HostArgument;

/* One header: both texts zero-terminated. */
typedef struct HostHeader {
    const char* name;
    const char* value;
} HostHeader;

/* ---- Requests, responses and events ------------------------------------ */

enum HostMethod {
    HostMethodAny = 0,
    HostMethodDelete = 1,
    HostMethodGet = 2,
    HostMethodHead = 3,
    HostMethodOptions = 4,
    HostMethodPatch = 5,
    HostMethodPost = 6,
    HostMethodPut = 7,
    HostMethodOther = 8 /* named by HostRequest.methodName */
};

/* A request. Filled by the plug-in for SendRequest (it owns every pointer
 * until SendRequest returns), or by the host for an endpoint entry (the host
 * owns every pointer until the entry returns). */
typedef struct HostRequest {
    uint32_t method;  /* a HostMethod; codes outside 1 to 8 travel as 0 */
    const char* path; /* zero-terminated, possibly followed by "?" and a query */
    const HostArgument* arguments;
    uint32_t argumentCount;
    const void* endpointContext; /* the endpoint record's context; null in requests the plug-in sends */
    const HostHeader* headers;
    uint32_t headerCount;
    const char* contentType; /* of the body */
    const void* body;
    uint32_t bodyLength;
    uint32_t context;       /* the host context of PluginStartInfo in requests the plug-in sends */
    const char* methodName; /* read only with method 8 */
} HostRequest;

struct HostResponse;
typedef bool (*HostStreamReadFunction)(void* producer, void* buffer, uint32_t* size, bool* more);
typedef void (*HostStreamCloseFunction)(void* producer);
typedef void (*HostResponseReleaseFunction)(struct HostResponse* response);

/* A response. The side that fills it owns what it allocated in it until the
 * other side calls release. A non-null error text means the request failed. */
typedef struct HostResponse {
    HostValue result;
    const char* error;
    uint8_t errorFlag;         /* 1: the record owns the error text */
    uint8_t responseKind;      /* the kind of answer the handler chose; its meaning is the host's */
    uint32_t responseKindCode; /* 1, 2 or 3; 0 when the handler chose none of them */
    uint32_t status;
    const char* text;
    const HostHeader* headers;
    uint32_t headerCount;
    HostStreamReadFunction streamRead; /* null when the body is not streamed */
    HostStreamCloseFunction streamClose;
    uint64_t expectedStreamLength; /* a hint */
    void* streamProducer;
    HostResponseReleaseFunction release; /* frees what the filling side allocated; may be null */
} HostResponse;

/* An event: sent by the plug-in through SendEvent (the plug-in owns it until
 * SendEvent returns), or delivered by the host to a subscriber (the host owns
 * it until the callback returns). */
typedef struct HostEvent {
    const char* name;
    HostValue payload;
    /* A word that the sender sets, its meaning the host's; 0 in every event the plug-in sends. */
    uint32_t senderContext;
    void* userData; /* on delivery: the user data given at subscription */
} HostEvent;

/* ---- Start-up ----------------------------------------------------------- */

struct CoreApi;
typedef void (*HostEventCallback)(const HostEvent* event);
typedef void (*HostScheduledCallback)(void* userData);

/* The host's function table. Owned by the host; valid from Start until Stop
 * returns. Every entry takes the table's own address first. [host-thread]
 *
 * Texts the plug-in passes are zero-terminated and owned by the plug-in. Unless
 * an entry says longer, they are valid until the entry returns; the host copies
 * what it keeps. Callbacks and user data are the plug-in's and valid until
 * Stop; after Stop they refer to freed memory, and a plug-in that is called
 * through them anyway drops the call with one log line. */
typedef struct CoreApi {
    /* Sends a request to the host or another plug-in; returns when response is
     * filled. The request and its texts are valid until the entry returns; the
     * response is the host's to fill and the plug-in's to release. */
    void (*SendRequest)(const struct CoreApi* api, HostResponse* response, const HostRequest* request);
    /* The host's entry 1, named by its place in the table: its meaning is the
     * host's. Forwarded by the module, never called by this plug-in. */
    uint32_t (*CoreEntry1)(const struct CoreApi* api, uint32_t first, uint32_t second);
    /* Publishes an event; the event and its payload are valid until the entry returns. */
    void (*SendEvent)(const struct CoreApi* api, const HostEvent* event);
    /* Registers callback for the named event; flag is 0 for resource events, 1
     * otherwise. name stays valid until the UnsubscribeHostEvent of that name
     * returns, or until Stop, so the host may keep the pointer. */
    void (*SubscribeHostEvent)(const struct CoreApi* api, const char* name, uint32_t hostContext,
                               HostEventCallback callback, void* userData, uint32_t flag);
    /* name is valid until the entry returns. */
    void (*UnsubscribeHostEvent)(const struct CoreApi* api, const char* name, uint32_t hostContext);
    /* Runs callback(userData) once on the host's scheduler after delaySeconds;
     * flag is always 0. label stays valid until the callback has run, or until
     * Stop. */
    void (*ScheduleCallback)(const struct CoreApi* api, const char* label, HostScheduledCallback callback,
                             void* userData, double delaySeconds, uint32_t flag);
    /* Gives the host one turn: it may deliver events and requests before returning. */
    void (*YieldToHost)(const struct CoreApi* api);
    /* Opens a wait, during which the plug-in yields; label stays valid until
     * the matching EndWait returns. */
    void (*BeginWait)(const struct CoreApi* api, const char* label, uint32_t zero);
    void (*EndWait)(const struct CoreApi* api);
    /* level: 0 OKAY, 1 WARN, 2 ERROR, 3 ALWAYS; text is a finished log line,
     * valid until the entry returns. */
    void (*Log)(const struct CoreApi* api, int32_t level, const char* text);
} CoreApi;

/* Argument of Start. Owned by the host; the plug-in keeps the pointer until Stop. */
typedef struct PluginStartInfo {
    const CoreApi* api;
    uint32_t hostContext; /* passed back in every request and event registration */
} PluginStartInfo;

/* Allocation counters: six 64-bit counters, low word first, then two zero words. */
typedef struct MemoryStats {
    uint32_t words[14];
} MemoryStats;

/* The plug-in's callbacks; the table lives in the module, valid until Stop. */
typedef struct PluginCallbacks {
    bool (*Start)(void* context, const PluginStartInfo* info);
    void (*Stop)(void* context);                             /* the context is invalid afterwards */
    void (*GetMemoryStats)(void* context, MemoryStats* out); /* any thread */
} PluginCallbacks;

struct HostApiTable;

/* The in/out record of the exported entry. Owned by the host. The plug-in
 * reads fields 0 to 2 (the core's plug-in API version) and overwrites all. */
typedef struct PluginLoadInfo {
    uint32_t major;
    uint32_t minor;
    uint32_t patch;
    const PluginCallbacks* callbacks;    /* out: owned by the module */
    void* context;                       /* out: the module */
    const char* shortName;               /* out: owned by the module */
    const struct HostApiTable* apiTable; /* out: owned by the module */
} PluginLoadInfo;

/* ---- The API table -------------------------------------------------------
 * Owned by the module and valid until Stop; the host only reads it. Every
 * record array is contiguous and each record's first field also points to the
 * next record of its array (null in the last). */

typedef void (*HostEndpointFunction)(HostResponse* response, const HostRequest* request);

typedef struct HostEndpointContext {
    void* module;
    const void* route;
} HostEndpointContext;

typedef struct HostArgumentRecord {
    const struct HostArgumentRecord* next;
    const char* name;
    const char* description;
    uint32_t kind;
    uint32_t elementKind;
    const char* typeName;
    uint8_t optional;
} HostArgumentRecord;

typedef struct HostLocationRecord {
    const struct HostLocationRecord* next;
    uint32_t location; /* 1 query, 2 path, 4 header, 5 body; anything else 0 */
} HostLocationRecord;

typedef struct HostTextListRecord {
    const struct HostTextListRecord* next;
    const char* const* texts;
    uint32_t count;
} HostTextListRecord;

typedef struct HostEndpointRecord {
    const struct HostEndpointRecord* next;
    uint32_t zero;
    const HostEndpointContext* context;
    const char* functionName;
    const char* nameSpace;
    const HostArgumentRecord* arguments;
    uint32_t argumentCount;
    uint32_t resultKind;
    uint32_t resultElementKind;
    const char* resultTypeName;
    const char* description;
    const char* help;
    uint8_t threadSafe;
    const char* asyncResultTypeName;
    const char* const* tags;
    uint32_t tagCount;
    HostEndpointFunction entry;
    const HostLocationRecord* locations;
    const char* pathTemplate;
    uint32_t method;
    uint8_t flag;
    const HostTextListRecord* textLists;
    uint32_t textListCount;
    const char* methodName;
} HostEndpointRecord;

typedef struct HostFieldRecord {
    const struct HostFieldRecord* next;
    const char* name;
    const char* description;
    uint32_t offset;
    uint32_t kind;
    uint32_t elementKind;
    const char* typeName;
    uint8_t optional;
} HostFieldRecord;

typedef struct HostEnumeratorRecord {
    const struct HostEnumeratorRecord* next;
    const char* name;
    const char* description;
    int32_t value;
} HostEnumeratorRecord;

typedef struct HostTypeRecord {
    const struct HostTypeRecord* next;
    const char* name;
    const char* nameSpace;
    uint32_t size;
    const char* description;
    const char* const* tags;
    uint32_t tagCount;
    const HostFieldRecord* fields;           /* set when the type has fields */
    const HostEnumeratorRecord* enumerators; /* set when it has none */
    uint32_t count;
} HostTypeRecord;

typedef struct HostEventRecord {
    const struct HostEventRecord* next;
    const char* name;
    const char* nameSpace;
    const char* payloadTypeName;
    const char* description;
    const char* const* tags;
    uint32_t tagCount;
} HostEventRecord;

typedef struct HostApiTable {
    const HostEndpointRecord* endpoints;
    uint32_t endpointCount;
    const HostTypeRecord* types;
    uint32_t typeCount;
    const HostEventRecord* events;
    uint32_t eventCount;
} HostApiTable;

#pragma pack(pop)

/* The plug-in's one export. Returns the module (also stored in info->context).
 * Ends the process when the core's plug-in API version is incompatible. */
typedef void* (*PluginLoadFunction)(PluginLoadInfo* info);

/* ---- Layout ------------------------------------------------------------- */

#ifdef __cplusplus
#define TAV_BOUNDARY_ASSERT(condition, what) static_assert(condition, what)
#else
#define TAV_BOUNDARY_ASSERT(condition, what) _Static_assert(condition, what)
#endif
#define TAV_AT(type, field, at32, at64) \
    TAV_BOUNDARY_ASSERT(offsetof(type, field) == (sizeof(void*) == 4 ? (at32) : (at64)), #type "." #field)
#define TAV_SIZE(type, size32, size64) \
    TAV_BOUNDARY_ASSERT(sizeof(type) == (sizeof(void*) == 4 ? (size32) : (size64)), "sizeof " #type)

TAV_SIZE(HostValue, 12, 16);
TAV_AT(HostValue, payload, 4, 4);
TAV_AT(HostValue, payload.ref.length, 8, 12);
TAV_SIZE(HostObjectMember, 17, 25);
TAV_AT(HostObjectMember, value, 4, 8);
TAV_AT(HostObjectMember, ownsName, 16, 24);
TAV_SIZE(HostArgument, 16, 24);
TAV_SIZE(HostHeader, 8, 16);

TAV_SIZE(HostRequest, 48, 76);
TAV_AT(HostRequest, path, 4, 4);
TAV_AT(HostRequest, arguments, 8, 12);
TAV_AT(HostRequest, argumentCount, 12, 20);
TAV_AT(HostRequest, endpointContext, 16, 24);
TAV_AT(HostRequest, headers, 20, 32);
TAV_AT(HostRequest, headerCount, 24, 40);
TAV_AT(HostRequest, contentType, 28, 44);
TAV_AT(HostRequest, body, 32, 52);
TAV_AT(HostRequest, bodyLength, 36, 60);
TAV_AT(HostRequest, context, 40, 64);
TAV_AT(HostRequest, methodName, 44, 68);

TAV_SIZE(HostResponse, 62, 94);
TAV_AT(HostResponse, error, 12, 16);
TAV_AT(HostResponse, errorFlag, 16, 24);
TAV_AT(HostResponse, responseKind, 17, 25);
TAV_AT(HostResponse, responseKindCode, 18, 26);
TAV_AT(HostResponse, status, 22, 30);
TAV_AT(HostResponse, text, 26, 34);
TAV_AT(HostResponse, headers, 30, 42);
TAV_AT(HostResponse, headerCount, 34, 50);
TAV_AT(HostResponse, streamRead, 38, 54);
TAV_AT(HostResponse, streamClose, 42, 62);
TAV_AT(HostResponse, expectedStreamLength, 46, 70);
TAV_AT(HostResponse, streamProducer, 54, 78);
TAV_AT(HostResponse, release, 58, 86);

TAV_SIZE(HostEvent, 24, 36);
TAV_AT(HostEvent, payload, 4, 8);
TAV_AT(HostEvent, senderContext, 16, 24);
TAV_AT(HostEvent, userData, 20, 28);

TAV_SIZE(MemoryStats, 56, 56);
TAV_SIZE(CoreApi, 40, 80);
TAV_SIZE(PluginStartInfo, 8, 12);
TAV_SIZE(PluginCallbacks, 12, 24);
TAV_SIZE(PluginLoadInfo, 28, 44);
TAV_AT(PluginLoadInfo, callbacks, 12, 12);
TAV_AT(PluginLoadInfo, context, 16, 20);
TAV_AT(PluginLoadInfo, shortName, 20, 28);
TAV_AT(PluginLoadInfo, apiTable, 24, 36);

TAV_SIZE(HostEndpointContext, 8, 16);
TAV_SIZE(HostApiTable, 24, 36);
TAV_AT(HostApiTable, endpointCount, 4, 8);
TAV_AT(HostApiTable, types, 8, 12);
TAV_AT(HostApiTable, typeCount, 12, 20);
TAV_AT(HostApiTable, events, 16, 24);
TAV_AT(HostApiTable, eventCount, 20, 32);

TAV_SIZE(HostEndpointRecord, 90, 150);
TAV_AT(HostEndpointRecord, zero, 4, 8);
TAV_AT(HostEndpointRecord, context, 8, 12);
TAV_AT(HostEndpointRecord, functionName, 12, 20);
TAV_AT(HostEndpointRecord, nameSpace, 16, 28);
TAV_AT(HostEndpointRecord, arguments, 20, 36);
TAV_AT(HostEndpointRecord, argumentCount, 24, 44);
TAV_AT(HostEndpointRecord, resultKind, 28, 48);
TAV_AT(HostEndpointRecord, resultElementKind, 32, 52);
TAV_AT(HostEndpointRecord, resultTypeName, 36, 56);
TAV_AT(HostEndpointRecord, description, 40, 64);
TAV_AT(HostEndpointRecord, help, 44, 72);
TAV_AT(HostEndpointRecord, threadSafe, 48, 80);
TAV_AT(HostEndpointRecord, asyncResultTypeName, 49, 81);
TAV_AT(HostEndpointRecord, tags, 53, 89);
TAV_AT(HostEndpointRecord, tagCount, 57, 97);
TAV_AT(HostEndpointRecord, entry, 61, 101);
TAV_AT(HostEndpointRecord, locations, 65, 109);
TAV_AT(HostEndpointRecord, pathTemplate, 69, 117);
TAV_AT(HostEndpointRecord, method, 73, 125);
TAV_AT(HostEndpointRecord, flag, 77, 129);
TAV_AT(HostEndpointRecord, textLists, 78, 130);
TAV_AT(HostEndpointRecord, textListCount, 82, 138);
TAV_AT(HostEndpointRecord, methodName, 86, 142);

TAV_SIZE(HostArgumentRecord, 25, 41);
TAV_AT(HostArgumentRecord, name, 4, 8);
TAV_AT(HostArgumentRecord, description, 8, 16);
TAV_AT(HostArgumentRecord, kind, 12, 24);
TAV_AT(HostArgumentRecord, elementKind, 16, 28);
TAV_AT(HostArgumentRecord, typeName, 20, 32);
TAV_AT(HostArgumentRecord, optional, 24, 40);

TAV_SIZE(HostLocationRecord, 8, 12);
TAV_SIZE(HostTextListRecord, 12, 20);

TAV_SIZE(HostTypeRecord, 40, 68);
TAV_AT(HostTypeRecord, name, 4, 8);
TAV_AT(HostTypeRecord, nameSpace, 8, 16);
TAV_AT(HostTypeRecord, size, 12, 24);
TAV_AT(HostTypeRecord, description, 16, 28);
TAV_AT(HostTypeRecord, tags, 20, 36);
TAV_AT(HostTypeRecord, tagCount, 24, 44);
TAV_AT(HostTypeRecord, fields, 28, 48);
TAV_AT(HostTypeRecord, enumerators, 32, 56);
TAV_AT(HostTypeRecord, count, 36, 64);

TAV_SIZE(HostFieldRecord, 29, 45);
TAV_AT(HostFieldRecord, offset, 12, 24);
TAV_AT(HostFieldRecord, kind, 16, 28);
TAV_AT(HostFieldRecord, elementKind, 20, 32);
TAV_AT(HostFieldRecord, typeName, 24, 36);
TAV_AT(HostFieldRecord, optional, 28, 44);

TAV_SIZE(HostEnumeratorRecord, 16, 28);
TAV_AT(HostEnumeratorRecord, value, 12, 24);

TAV_SIZE(HostEventRecord, 28, 52);
TAV_AT(HostEventRecord, payloadTypeName, 12, 24);
TAV_AT(HostEventRecord, description, 16, 32);
TAV_AT(HostEventRecord, tags, 20, 40);
TAV_AT(HostEventRecord, tagCount, 24, 48);

#undef TAV_AT
#undef TAV_SIZE
#undef TAV_BOUNDARY_ASSERT

#ifdef __cplusplus
}
#endif

#endif /* TAV_BOUNDARY_BOUNDARY_H */
