/* Says which services a programme's tracks carry, or everything that keeps them from it.
 *
 * usage: diagnose LAYOUT PROGRAMME      LAYOUT: "T8=5.1 Mix,Stereo"; PROGRAMME: see programme.h
 *
 * The exit code is 0 when the tracks carry the services, 1 when they do not, and 2 when the
 * programme or the request cannot be used. The program needs no C++ run-time of its own. */
#include <inttypes.h>
#include <kestrel/kestrel.h>
#include <stdlib.h>

#include "programme.h"

enum { CARRIED, NOT_CARRIED, TROUBLE };

static const char* typeName(int32_t type) {
  const char* name = type == KESTREL_EMCA ? "EMCA" : "unknown";
  kestrelStreamTypeName(type, &name); /* leaves the name alone where it knows none */
  return name;
}

static void printServices(const KestrelAnalysis* analysis) {
  KestrelService service = {.structSize = sizeof service};
  for (int32_t i = 0; kestrelGetService(analysis, i, &service) == KESTREL_OK; ++i) {
    printf("service %-8s", typeName(service.streamType));
    for (int32_t slot = 0; slot < service.trackCount; ++slot) {
      const KestrelTrack* track = &service.slots[slot];
      printf(" %" PRId64 ".%" PRId32, track->trackNumber, track->indexInGroup + 1);
    }
    printf("%s%s\n", service.label[0] != '\0' ? "  " : "", service.label);
  }
}

/* Asks for the length first, since a sentence may quote the layout at any length. */
static char* sentence(const KestrelAnalysis* analysis, int32_t index) {
  size_t needed = 0;
  kestrelFindingText(analysis, index, NULL, 0, &needed);
  char* text = malloc(needed);
  if (text != NULL) kestrelFindingText(analysis, index, text, needed, &needed);
  return text;
}

static void printFindings(const KestrelAnalysis* analysis) {
  KestrelFinding finding = {.structSize = sizeof finding};
  for (int32_t i = 0; kestrelGetFinding(analysis, i, &finding) == KESTREL_OK; ++i) {
    char* text = sentence(analysis, i);
    const char* severity = finding.code < KESTREL_UNKNOWN_SERVICE ? "error" : "note";
    printf("%-5s %3" PRId32 " %s\n", severity, finding.code, text != NULL ? text : "");
    free(text);
  }
}

static int report(const KestrelAnalysis* analysis) {
  static const char* const outcomes[] = {"these are not the tracks that the services need",
                                         "neighbouring tracks of a service disagree",
                                         "the tracks carry the services"};
  int32_t outcome = 0;
  uint32_t tracks = 0;
  kestrelOutcome(analysis, &outcome, &tracks);
  printf("%" PRIu32 " tracks: %s\n", tracks, outcomes[outcome]);
  printServices(analysis);
  printFindings(analysis);
  return outcome == KESTREL_FILLED ? CARRIED : NOT_CARRIED;
}

static int diagnose(const char* layout, const Programme* programme) {
  const KestrelRequest request = {.structSize = sizeof request,
                                  .streamCount = programme->count,
                                  .layoutDescription = layout,
                                  .surroundChannelOrder = "L R C LFE Ls Rs",
                                  .streams = programme->streams,
                                  .streamStride = sizeof programme->streams[0],
                                  .surroundCheck = 1};
  KestrelAnalysis* analysis = NULL;
  size_t byte = 0;
  int32_t stream = -1;
  const KestrelStatus status = kestrelAnalyse(&request, &analysis, &byte, &stream);
  if (status == KESTREL_BAD_TEXT) {
    const char* id = stream < 0 ? "" : programme->streams[stream].streamId;
    fprintf(stderr, "diagnose: byte %zu of %s%s: ", byte,
            stream < 0 ? "the layout" : "a text of stream ", id);
  }
  if (status != KESTREL_OK) {
    fprintf(stderr, "%s\n", kestrelStatusText(status));
    return TROUBLE;
  }
  const int result = report(analysis);
  kestrelFreeAnalysis(analysis);
  return result;
}

int main(int count, char** arguments) {
  static Programme programme; /* too large for a small stack */
  if (count != 3 || kestrelAbiVersion() != KESTREL_ABI) {
    fprintf(stderr, "usage: diagnose LAYOUT PROGRAMME, with interface %d of the library\n",
            KESTREL_ABI);
    return TROUBLE;
  }
  FILE* file = fopen(arguments[2], "r");
  if (file == NULL) {
    perror(arguments[2]);
    return TROUBLE;
  }
  const int badLine = readProgramme(file, &programme);
  fclose(file);
  if (badLine != 0) {
    fprintf(stderr, "diagnose: line %d of %s is no stream\n", badLine, arguments[2]);
    return TROUBLE;
  }
  return diagnose(arguments[1], &programme);
}
