/* A host written in C. It knows nothing but the plain C header: it walks the catalogue, has two
 * files analysed and reads all that there is to read. Every expectation is counted; one that fails
 * prints its place, and the program goes on. */
#include <stdio.h>
#include <string.h>

#include "api/kestrel.h"
#include "tests/c_api/c_record_offsets.h"

static int checks = 0;
static int failures = 0;

static void check(int holds, const char* text, const char* file, int line) {
  ++checks;
  if (holds) return;
  ++failures;
  printf("%s:%d: %s\n", file, line, text);
}

#define CHECK(condition) check((condition) != 0, #condition, __FILE__, __LINE__)

/* ---- Catalogue ---- */

static void readVersion(void) {
  CHECK(strcmp(kestrelVersion(), KESTREL_VERSION) == 0);
  CHECK(kestrelAbiVersion() == KESTREL_ABI);
  CHECK(strcmp(kestrelStatusText(99), "unknown status") == 0);
  CHECK(strcmp(kestrelStatusText(KESTREL_OK), "unknown status") != 0);
}

/* Reads the streams of an item and returns how many tracks they occupy. */
static int32_t readStreams(int32_t item) {
  int32_t types[16];
  size_t count = 0;
  int32_t sum = 0;
  CHECK(kestrelItemStreamTypes(item, types, 16, &count) == KESTREL_OK);
  for (size_t i = 0; i < count && i < 16; ++i) {
    const char* typeName = NULL;
    char streamName[32] = "";
    size_t needed = 0;
    int32_t tracks = 0;
    CHECK(kestrelStreamTypeName(types[i], &typeName) == KESTREL_OK);
    CHECK(kestrelItemStreamName(item, (int32_t)i, streamName, 32, &needed) == KESTREL_OK);
    CHECK(needed == strlen(streamName) + 1);
    CHECK(typeName != NULL && strncmp(streamName, typeName, strlen(typeName)) == 0);
    CHECK(kestrelStreamTypeTracks(types[i], &tracks) == KESTREL_OK);
    sum += tracks;
  }
  return sum;
}

static void readItem(int32_t item, int32_t row, int32_t tracks) {
  const char* name = NULL;
  char text[128] = "";
  size_t needed = 0;
  int32_t found = -1;
  CHECK(kestrelItemRow(item, &found) == KESTREL_OK && found == row);
  CHECK(kestrelItemName(item, &name) == KESTREL_OK && name != NULL);
  CHECK(name != NULL && kestrelItemFromName(name, &found) == KESTREL_OK && found == item);
  CHECK(kestrelItemText(item, text, sizeof text, &needed) == KESTREL_OK);
  CHECK(needed == strlen(text) + 1);
  CHECK(kestrelItemFromText(text, &found) == KESTREL_OK && found <= item);
  CHECK(readStreams(item) == tracks);
}

static void walkCatalogue(void) {
  int32_t rows = 0;
  int32_t items = 0;
  int32_t types = 0;
  int32_t next = 0;
  CHECK(kestrelCatalogueSize(&rows, &items, &types) == KESTREL_OK);
  CHECK(rows == 7 && items == 41 && types == 5);
  for (int32_t row = 0; row < rows; ++row) {
    int32_t list[16];
    size_t count = 0;
    int32_t first = -1;
    int32_t tracks = 0;
    CHECK(kestrelRowTracks(row, &tracks) == KESTREL_OK);
    CHECK(kestrelRowItems(row, list, 16, &count) == KESTREL_OK && count > 0);
    CHECK(kestrelRowDefaultItem(row, &first) == KESTREL_OK && first == list[0]);
    for (size_t i = 0; i < count && i < 16; ++i) {
      CHECK(list[i] == next++);
      readItem(list[i], row, tracks);
    }
  }
  CHECK(next == items);
}

static void readLayoutCodes(void) {
  int32_t count = 0;
  int32_t item = -1;
  const char* code = NULL;
  while (kestrelLayoutCode(count, &code, &item) == KESTREL_OK) {
    CHECK(code != NULL && item >= 0 && item < 41);
    ++count;
  }
  CHECK(count > 0);
  CHECK(kestrelItemFromLayoutCode("EBU R 123: 8b", &item) == KESTREL_OK && item == 7);
  CHECK(kestrelItemFromLayoutCode("Stereo", &item) == KESTREL_UNKNOWN_NAME && item == 7);
}

/* ---- Analysis ---- */

static KestrelStream makeStream(const char* id, int32_t channels, const char* labels) {
  KestrelStream stream = {0};
  stream.structSize = sizeof stream;
  stream.streamId = id;
  stream.trackLabels = labels;
  stream.channelCount = channels;
  stream.formatKey1 = 48000;
  return stream;
}

static KestrelRequest makeRequest(const KestrelStream* streams, int32_t count) {
  KestrelRequest request = {0};
  request.structSize = sizeof request;
  request.layoutDescription = "T2=Stereo;T8=5.1 Mix,Stereo";
  request.surroundChannelOrder = "L R C LFE Ls Rs";
  request.streams = streams;
  request.streamCount = count;
  request.streamStride = sizeof *streams;
  request.surroundCheck = 1;
  return request;
}

static void checkService(const KestrelAnalysis* analysis, int32_t index, int32_t type,
                         int32_t tracks, int64_t number) {
  KestrelService service;
  memset(&service, 0x5A, sizeof service);
  service.structSize = sizeof service;
  CHECK(kestrelGetService(analysis, index, &service) == KESTREL_OK);
  CHECK(service.serviceIndex == index && service.streamType == type);
  CHECK(service.trackCount == tracks && service.reported == 1);
  CHECK(service.isEmca == 0 && service.requested == 0);
  CHECK(strcmp(service.label, type == KESTREL_51_MIX ? "L R C LFE Ls Rs" : "") == 0);
  for (int32_t i = 0; i < KESTREL_SLOTS; ++i) {
    const KestrelTrack* track = &service.slots[i];
    CHECK(track->trackNumber == (i < tracks ? number : -1));
    CHECK(track->group == (i < tracks ? 0 : -1));
    CHECK(track->sourceGroup == (i < tracks ? 0 : -1));
    CHECK(track->indexInGroup == (i < tracks ? i : -1));
    CHECK(track->reserved == -1);
  }
}

static void analyseCleanFile(void) {
  const KestrelStream streams[2] = {makeStream("1", 6, "L R C LFE Ls Rs"),
                                    makeStream("2", 2, "L R")};
  const KestrelRequest request = makeRequest(streams, 2);
  KestrelAnalysis* analysis = NULL;
  int32_t outcome = -1;
  uint32_t total = 0;
  int32_t count = -1;
  CHECK(kestrelAnalyse(&request, &analysis, NULL, NULL) == KESTREL_OK && analysis != NULL);
  CHECK(kestrelOutcome(analysis, &outcome, &total) == KESTREL_OK);
  CHECK(outcome == KESTREL_FILLED && total == 8);
  CHECK(kestrelServiceCount(analysis, &count) == KESTREL_OK && count == 2);
  checkService(analysis, 0, KESTREL_51_MIX, 6, 1);
  checkService(analysis, 1, KESTREL_STEREO, 2, 2);
  CHECK(kestrelFindingCount(analysis, &count) == KESTREL_OK && count == 0);
  kestrelFreeAnalysis(analysis);
}

static void checkFinding(const KestrelAnalysis* analysis) {
  KestrelFinding finding;
  char text[512] = "";
  size_t needed = 0;
  memset(&finding, 0x5A, sizeof finding);
  finding.structSize = sizeof finding;
  CHECK(kestrelGetFinding(analysis, 0, &finding) == KESTREL_OK);
  CHECK(finding.code == KESTREL_NO_ENTRY && finding.first == 7 && finding.second == 0);
  CHECK(finding.service == -1 && finding.slot == -1 && finding.stream == -1);
  CHECK(finding.track == -1 && finding.textOffset == -1 && finding.textLength == -1);
  CHECK(kestrelFindingText(analysis, 0, text, sizeof text, &needed) == KESTREL_OK);
  CHECK(needed == strlen(text) + 1 && strchr(text, '7') != NULL);
}

static void analyseUndescribedFile(void) {
  const KestrelStream stream = makeStream("1", 7, "");
  const KestrelRequest request = makeRequest(&stream, 1);
  KestrelAnalysis* analysis = NULL;
  int32_t outcome = -1;
  int32_t count = -1;
  int32_t totals[4] = {0};
  size_t needed = 0;
  CHECK(kestrelAnalyse(&request, &analysis, NULL, NULL) == KESTREL_OK && analysis != NULL);
  CHECK(kestrelOutcome(analysis, &outcome, NULL) == KESTREL_OK && outcome == KESTREL_UNTOUCHED);
  CHECK(kestrelServiceCount(analysis, &count) == KESTREL_OK && count == 0);
  CHECK(kestrelFindingCount(analysis, &count) == KESTREL_OK && count == 1);
  checkFinding(analysis);
  CHECK(kestrelDescribedTotals(analysis, totals, 4, &needed) == KESTREL_OK && needed == 2);
  CHECK(totals[0] == 2 && totals[1] == 8);
  kestrelFreeAnalysis(analysis);
}

static void analyseBadText(void) {
  const KestrelStream stream = makeStream("1", 2, "L \xC0\x80");
  const KestrelRequest request = makeRequest(&stream, 1);
  KestrelAnalysis* analysis = NULL;
  size_t badByte = 0;
  int32_t badStream = -1;
  CHECK(kestrelAnalyse(&request, &analysis, &badByte, &badStream) == KESTREL_BAD_TEXT);
  CHECK(analysis == NULL && badByte == 2 && badStream == 0);
  kestrelFreeAnalysis(NULL);
}

int main(void) {
  readVersion();
  walkCatalogue();
  readLayoutCodes();
  analyseCleanFile();
  analyseUndescribedFile();
  analyseBadText();
  if (failures != 0) {
    printf("%d of %d checks failed\n", failures, checks);
    return 1;
  }
  printf("%d checks passed\n", checks);
  return 0;
}
