/* The plain C interface of Kestrel: for hosts that do not share the library's C++ run-time, and for
 * hosts that want to know why a file does not carry its services.
 *
 * Conventions of all functions:
 *
 *  1. Every function returns a KestrelStatus: KESTREL_OK (0) or one named code per expected
 *     failure. Nothing is thrown and nothing crashes for any value of an argument, as long as
 *     non-NULL pointers point to what they promise. Exceptions: kestrelStatusText(),
 *     kestrelVersion() and kestrelAbiVersion() return their answer, kestrelFreeAnalysis() nothing.
 *  2. A call that fails changes nothing that its pointers point to, with three exceptions:
 *     KESTREL_BUFFER_TOO_SMALL sets the needed capacity (see 5), KESTREL_BAD_TEXT says which byte
 *     of which stream is wrong, and kestrelAnalyse() sets its result to NULL.
 *  3. An out-pointer must not be NULL unless its function says so; the status is
 *     KESTREL_NULL_ARGUMENT otherwise. Texts passed in must not be NULL.
 *  4. Texts are UTF-8 with a terminating NUL. Texts returned through a const char** are constants
 *     of the library, valid until it is unloaded. The labels of an analysis belong to it and are
 *     valid until it is freed.
 *  5. Every buffer comes with its capacity, in elements for integers and in bytes for texts,
 *     including the NUL. Nothing is written to a buffer that is too small. The needed capacity is
 *     always written to *needed, also on success. A NULL buffer with a capacity of 0 asks for the
 *     needed capacity: the status is then KESTREL_BUFFER_TOO_SMALL, unless nothing is needed.
 *  6. Records that may grow begin with structSize, which the host sets to its sizeof before every
 *     call, whether the record is read or filled. A size below that of the first release is refused
 *     with KESTREL_BAD_RECORD_SIZE. In a larger record, only the fields that this library knows are
 *     read or written.
 *  7. Any number of threads may call any function at once. Any number of threads may read one
 *     analysis; it must not be freed while another thread reads it, nor used after it is freed.
 */
#ifndef KESTREL_API_KESTREL_H
#define KESTREL_API_KESTREL_H

#include <stddef.h>
#include <stdint.h>

#include "kestrel_version.h"

#if defined(_WIN32)
#define KESTREL_FUNCTION
#else
#define KESTREL_FUNCTION __attribute__((visibility("default")))
#endif

/* NOLINTBEGIN(modernize-use-using): the header is C as well. */

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status ---------------------------------------------------------------------------------- */

typedef int32_t KestrelStatus;

#define KESTREL_OK 0               /* done */
#define KESTREL_UNKNOWN_ID 1       /* a row, item, stream type or position that does not exist */
#define KESTREL_UNKNOWN_NAME 2     /* a text that names nothing */
#define KESTREL_BUFFER_TOO_SMALL 3 /* only the needed capacity was written */
#define KESTREL_NULL_ARGUMENT 4    /* a pointer that must not be NULL is NULL */
#define KESTREL_BAD_TEXT 5         /* a text that is not UTF-8 */
#define KESTREL_BAD_COUNT 6        /* a negative count */
#define KESTREL_BAD_RECORD_SIZE 7  /* a structSize or stride that no release knows */
#define KESTREL_BAD_INDEX 8        /* an index outside its list */
#define KESTREL_OUT_OF_MEMORY 9    /* nothing was kept */

/* A short English text for a status, a constant; "unknown status" for any other number. */
KESTREL_FUNCTION const char* kestrelStatusText(KestrelStatus status);

/* The version of the library, a constant: KESTREL_VERSION of the header it was built with. */
KESTREL_FUNCTION const char* kestrelVersion(void);

/* The number of this interface: KESTREL_ABI of the header that the library was built with. It grows
 * when hosts must be recompiled; additions do not change it. */
KESTREL_FUNCTION int32_t kestrelAbiVersion(void);

/* ---- Catalogue ------------------------------------------------------------------------------- */

/* Stream types. The catalogue contains 0 to 4. */
#define KESTREL_MONO 0
#define KESTREL_STEREO 1
#define KESTREL_51_MIX 2
#define KESTREL_71_MIX 3
#define KESTREL_DOLBY_E 4
#define KESTREL_EMCA 5    /* a pair-coded service of a layout description */
#define KESTREL_UNKNOWN 6 /* a service of unknown name */

/* The number of rows, items and catalogued stream types. Rows are 0 .. rows - 1, and so on. */
KESTREL_FUNCTION KestrelStatus kestrelCatalogueSize(int32_t* rows, int32_t* items,
                                                    int32_t* streamTypes);

/* Number of tracks that each item of a row fills. */
KESTREL_FUNCTION KestrelStatus kestrelRowTracks(int32_t row, int32_t* tracks);

/* The items of a row, its default first. capacity and *needed count integers. */
KESTREL_FUNCTION KestrelStatus kestrelRowItems(int32_t row, int32_t* items, size_t capacity,
                                               size_t* needed);

/* The first item of a row. */
KESTREL_FUNCTION KestrelStatus kestrelRowDefaultItem(int32_t row, int32_t* item);

/* The row that contains an item. */
KESTREL_FUNCTION KestrelStatus kestrelItemRow(int32_t item, int32_t* row);

/* The display name of an item, a constant. */
KESTREL_FUNCTION KestrelStatus kestrelItemName(int32_t item, const char** name);

/* The item with exactly this display name; KESTREL_UNKNOWN_NAME if there is none. All functions
 * that look a text up accept bytes that are not UTF-8; they match nothing. */
KESTREL_FUNCTION KestrelStatus kestrelItemFromName(const char* name, int32_t* item);

/* The stream types of an item in track order. capacity and *needed count integers. */
KESTREL_FUNCTION KestrelStatus kestrelItemStreamTypes(int32_t item, int32_t* types, size_t capacity,
                                                      size_t* needed);

/* The stream types of an item as names joined by ",": "5.1 Mix,Stereo". capacity and *needed count
 * bytes, including the NUL. */
KESTREL_FUNCTION KestrelStatus kestrelItemText(int32_t item, char* text, size_t capacity,
                                               size_t* needed);

/* The first item with exactly that text; KESTREL_UNKNOWN_NAME if there is none. */
KESTREL_FUNCTION KestrelStatus kestrelItemFromText(const char* text, int32_t* item);

/* The name of the stream at a position of an item, "Stereo" or "Mono 3". capacity and *needed count
 * bytes, including the NUL. */
KESTREL_FUNCTION KestrelStatus kestrelItemStreamName(int32_t item, int32_t position, char* name,
                                                     size_t capacity, size_t* needed);

/* The display name of a catalogued stream type, a constant. */
KESTREL_FUNCTION KestrelStatus kestrelStreamTypeName(int32_t type, const char** name);

/* Number of tracks that one stream of a catalogued type occupies. */
KESTREL_FUNCTION KestrelStatus kestrelStreamTypeTracks(int32_t type, int32_t* tracks);

/* The stream type with exactly this name; KESTREL_UNKNOWN_NAME if there is none. */
KESTREL_FUNCTION KestrelStatus kestrelStreamTypeFromName(const char* name, int32_t* type);

/* The item that an EBU R 123 layout code of AS-11 metadata stands for; KESTREL_UNKNOWN_NAME if it
 * stands for none. */
KESTREL_FUNCTION KestrelStatus kestrelItemFromLayoutCode(const char* code, int32_t* item);

/* The index-th layout code that the library knows, a constant, and its item, in the order in which
 * codes are tried; KESTREL_BAD_INDEX after the last. An earlier code may match instead: "12a" is
 * listed with item 20, but it contains "2a" and therefore means item 0. */
KESTREL_FUNCTION KestrelStatus kestrelLayoutCode(int32_t index, const char** code, int32_t* item);

/* ---- Analysis -------------------------------------------------------------------------------- */

/* One audio stream of a file: the same fields as AudioStreamInfo. */
typedef struct KestrelStream {
  uint32_t structSize;     /* sizeof(KestrelStream) */
  int32_t group;           /* group number, only copied and compared */
  const char* streamId;    /* begins with the track number; may contain "-" */
  const char* trackLabels; /* blank-separated labels of the tracks, in track order */
  int32_t channelCount;    /* tracks of the stream; 0 or less: none, but part of the total */
  int32_t formatKey1;      /* what neighbouring tracks of one service must share, for example */
  int32_t formatKey2;      /* sampling rate, bit depth, format */
  int32_t formatKey3;
  uint8_t isPairCoded;  /* 0 or 1: counts as one pair of tracks */
  uint8_t isPairShared; /* 0 or 1: shares one pair with every other such stream without "-" */
  uint8_t reserved[6];  /* 0 */
} KestrelStream;

/* What to analyse. The call reads everything and keeps no pointer. */
typedef struct KestrelRequest {
  uint32_t structSize;              /* sizeof(KestrelRequest) */
  int32_t streamCount;              /* 0 or more */
  const char* layoutDescription;    /* "T8=5.1 Mix,Stereo;T4=Stereo,Stereo" */
  const char* surroundChannelOrder; /* "L R C LFE Ls Rs" */
  const KestrelStream* streams;     /* may be NULL when streamCount is 0 */
  uint32_t streamStride;            /* sizeof(KestrelStream): see kestrelAnalyse() */
  uint8_t reportAll;                /* non-zero: services with a leading "-" are reported too */
  uint8_t surroundCheck;            /* non-zero: labels of 5.1 mixes are derived from the streams */
  uint8_t reserved[2];              /* 0 */
} KestrelRequest;

/* What getServiceMap() does with the same input. */
#define KESTREL_UNTOUCHED 0 /* returns 0 and leaves the host's records alone: detection failed */
#define KESTREL_EMPTIED 1   /* returns 0 and no records: neighbouring tracks do not agree */
#define KESTREL_FILLED 2    /* returns 1 and the records: the file carries the services */

/* One analysis, owned by the host; its contents never change. */
typedef struct KestrelAnalysis KestrelAnalysis;

/* Analyses a request.
 * analysis:  receives the analysis, which kestrelFreeAnalysis() frees; NULL on failure
 * badByte:   with KESTREL_BAD_TEXT, receives the 0-based position, in its text, of the first byte
 *            that is not UTF-8; may be NULL
 * badStream: with KESTREL_BAD_TEXT, receives the index of the stream that the text belongs to; -1
 *            for a text of the request itself; may be NULL
 * Texts are read in the order of their fields, those of the request first. streamStride is the
 * number of bytes from one stream to the next. It must be at least sizeof(KestrelStream) of the
 * first release, a multiple of 8, and not less than any stream's structSize, else the status is
 * KESTREL_BAD_RECORD_SIZE; it is ignored if there are no streams. Time and memory grow linearly
 * with the streams and the texts, never with a channelCount; only streams whose track numbers do
 * not ascend are also sorted. */
KESTREL_FUNCTION KestrelStatus kestrelAnalyse(const KestrelRequest* request,
                                              KestrelAnalysis** analysis, size_t* badByte,
                                              int32_t* badStream);

/* Frees an analysis; NULL is allowed. A host must not free an analysis twice. */
KESTREL_FUNCTION void kestrelFreeAnalysis(KestrelAnalysis* analysis);

/* The outcome, KESTREL_UNTOUCHED, KESTREL_EMPTIED or KESTREL_FILLED, and the file's track total,
 * which chooses the entry of the layout description. trackTotal may be NULL. */
KESTREL_FUNCTION KestrelStatus kestrelOutcome(const KestrelAnalysis* analysis, int32_t* outcome,
                                              uint32_t* trackTotal);

/* One track of a service. */
typedef struct KestrelTrack {
  int64_t trackNumber;  /* of the stream that carries it; -1 in an unused slot, as all fields */
  int32_t group;        /* once pair-coded streams are joined */
  int32_t sourceGroup;  /* the stream's own group */
  int32_t indexInGroup; /* 0-based index of the track in its group */
  int32_t reserved;     /* -1 */
} KestrelTrack;

#define KESTREL_SLOTS 32

/* One service that was found: the fields of a ServiceMapResult, and what it is. */
typedef struct KestrelService {
  uint32_t structSize;  /* sizeof(KestrelService) */
  int32_t trackCount;   /* at most KESTREL_SLOTS; -1 for a service of unknown name */
  int32_t serviceIndex; /* which element of the description's entry it is, from 0 */
  int32_t streamType;   /* KESTREL_MONO .. KESTREL_UNKNOWN */
  uint8_t reported;     /* 0 or 1 */
  uint8_t isEmca;       /* 0 or 1 */
  uint8_t requested;    /* 0 or 1 */
  uint8_t reserved[5];  /* 0 */
  const char* label;    /* labels of a 5.1 Mix, else empty; belongs to the analysis */
  KestrelTrack slots[KESTREL_SLOTS];
} KestrelService;

/* Number of services found; 0 unless the outcome is KESTREL_FILLED. */
KESTREL_FUNCTION KestrelStatus kestrelServiceCount(const KestrelAnalysis* analysis, int32_t* count);

/* The index-th service found, in the order of the description. */
KESTREL_FUNCTION KestrelStatus kestrelGetService(const KestrelAnalysis* analysis, int32_t index,
                                                 KestrelService* service);

/* ---- Diagnosis ------------------------------------------------------------------------------- */

/* Codes of findings. They are stable: a number never changes its meaning. The errors, below 100,
 * are the reasons why the outcome is not KESTREL_FILLED; the others may accompany any outcome. The
 * comment on a code names the fields of KestrelFinding that it uses. `first` and `second` are the
 * two values that differ, the expected one first. `stream` and `track` are those of the stream that
 * carries the track; if several streams share a track number, labels come from the first of them.
 */
/* The request has no streams. Uses no fields. */
#define KESTREL_NO_STREAMS 1
/* No entry for the file's track total. first: that total; kestrelDescribedTotals() has the others.
 */
#define KESTREL_NO_ENTRY 2
/* A pair-coded track instead of a plain one. service, slot, track, stream. */
#define KESTREL_PAIR_CODED_TRACK 3
/* A plain track instead of a pair-coded one. service, slot, track, stream. */
#define KESTREL_PLAIN_TRACK 4
/* Too few tracks are left for a service. service, slot: the first slot without a track; first: the
 * tracks that the service needs, second: those that are left for it. */
#define KESTREL_TOO_FEW_TRACKS 5
/* Neighbouring tracks of a service differ in a format key; one finding for each pair and key.
 * service; slot, track and stream of the second neighbour; first: key of the first neighbour,
 * second: of the second. The keys are those of the last stream with the track's number. */
#define KESTREL_KEY1_DIFFERS 6
#define KESTREL_KEY2_DIFFERS 7
#define KESTREL_KEY3_DIFFERS 8

/* An element that is not a known name. service, textOffset, textLength. */
#define KESTREL_UNKNOWN_SERVICE 101
/* An element without any characters. service, textOffset; textLength 0. */
#define KESTREL_EMPTY_ELEMENT 102
/* Tracks after the last service. track, stream: of the first one; first: tracks that services were
 * given, second: tracks of the file. Only if the outcome is not KESTREL_UNTOUCHED. */
#define KESTREL_TRACKS_LEFT_OVER 103
/* Labels of a 5.1 Mix, if surroundCheck is set and the outcome is not KESTREL_UNTOUCHED. service,
 * slot, track, stream: the track has no label. */
#define KESTREL_LABEL_MISSING 104
/* service, slot, track, stream: the label is none of L R C LFE Ls Rs. */
#define KESTREL_LABEL_UNKNOWN 105
/* service, slot, track, stream: an earlier slot has the same label; first: that slot. */
#define KESTREL_LABEL_DOUBLED 106
/* service, slot, track, stream: all six labels are present, but not in the surround channel order;
 * this slot is the first that differs. Only if that order itself contains all six labels. */
#define KESTREL_LABELS_REORDERED 107
/* A run of pair-coded tracks of one programme has more tracks than a record has slots. service,
 * track, stream: of its first track; first: slots, second: tracks. */
#define KESTREL_RUN_TOO_LONG 108
/* A service gets no track, because those before it took more than they occupy, and the outcome does
 * not depend on it: a Mono, whose record has an unused slot, or an EMCA, which has no record.
 * service; first: tracks that it needs. */
#define KESTREL_SERVICE_WITHOUT_TRACK 109

/* One finding. An index or number that the code does not use is -1; an unused `first` or `second`
 * is 0. A used `track` may be -1 as well: it is used if `stream` is not -1. */
typedef struct KestrelFinding {
  uint32_t structSize; /* sizeof(KestrelFinding) */
  int32_t code;
  int32_t service;  /* element of the description's entry, from 0 */
  int32_t slot;     /* track of the service, from 0 */
  int32_t stream;   /* index into the request's streams */
  int32_t reserved; /* 0 */
  int64_t track;    /* track number of that stream */
  int64_t first;    /* the two values that differ */
  int64_t second;
  int64_t textOffset; /* into the layout description, in bytes; includes a leading "-" */
  int64_t textLength;
} KestrelFinding;

/* The number of findings. */
KESTREL_FUNCTION KestrelStatus kestrelFindingCount(const KestrelAnalysis* analysis, int32_t* count);

/* The index-th finding: first the errors, then the others. Either are in the order of the services;
 * a finding on no service comes last. Once detection succeeds, only services that are to be
 * reported have findings on their tracks. */
KESTREL_FUNCTION KestrelStatus kestrelGetFinding(const KestrelAnalysis* analysis, int32_t index,
                                                 KestrelFinding* finding);

/* The index-th finding as one English sentence. capacity and *needed count bytes, including the
 * NUL. */
KESTREL_FUNCTION KestrelStatus kestrelFindingText(const KestrelAnalysis* analysis, int32_t index,
                                                  char* text, size_t capacity, size_t* needed);

/* The track totals that the layout description has entries for, each once, in the order of the
 * text. capacity and *needed count integers. */
KESTREL_FUNCTION KestrelStatus kestrelDescribedTotals(const KestrelAnalysis* analysis,
                                                      int32_t* totals, size_t capacity,
                                                      size_t* needed);

#ifdef __cplusplus
}
#endif

/* NOLINTEND(modernize-use-using) */

#endif /* KESTREL_API_KESTREL_H */
