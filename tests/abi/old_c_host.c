/* A host of the plain C interface as it was built against the baseline header. It prints what it is
 * told; the output is compared with that of the day when it was built first. */
#include <stdio.h>
#include <string.h>

#include "api/kestrel.h"

static void printItems(void) {
  int32_t rows = 0, items = 0, types = 0;
  printf("size: %d", kestrelCatalogueSize(&rows, &items, &types));
  printf(" %d %d %d\n", rows, items, types);
  for (int32_t item = 0; item < items; ++item) {
    char text[200] = "";
    size_t needed = 0;
    int32_t row = -1;
    const char* name = "";
    kestrelItemName(item, &name);
    kestrelItemRow(item, &row);
    kestrelItemText(item, text, sizeof text, &needed);
    printf("item %d, row %d: %s: %s (%zu)\n", item, row, name, text, needed);
  }
}

static void printService(const KestrelAnalysis* analysis, int32_t index) {
  KestrelService service = {.structSize = sizeof service};
  printf("service %d: %d", index, kestrelGetService(analysis, index, &service));
  printf(", tracks %d, element %d, type %d, flags %d %d %d, label \"%s\":", service.trackCount,
         service.serviceIndex, service.streamType, service.reported, service.isEmca,
         service.requested, service.label);
  for (int32_t i = 0; i < service.trackCount; ++i)
    printf(" %lld/%d/%d/%d", (long long)service.slots[i].trackNumber, service.slots[i].group,
           service.slots[i].sourceGroup, service.slots[i].indexInGroup);
  printf("\n");
}

static void printFinding(const KestrelAnalysis* analysis, int32_t index) {
  KestrelFinding finding = {.structSize = sizeof finding};
  char text[300] = "";
  size_t needed = 0;
  kestrelGetFinding(analysis, index, &finding);
  kestrelFindingText(analysis, index, text, sizeof text, &needed);
  printf(
      "finding %d, service %d, slot %d, stream %d, track %lld, %lld against %lld, at %lld+%lld\n",
      finding.code, finding.service, finding.slot, finding.stream, (long long)finding.track,
      (long long)finding.first, (long long)finding.second, (long long)finding.textOffset,
      (long long)finding.textLength);
  printf("  %s\n", needed == strlen(text) + 1 ? "a sentence" : "no sentence");
}

static void analyse(const char* description) {
  KestrelStream streams[2] = {{.structSize = sizeof *streams,
                               .streamId = "1",
                               .trackLabels = "L R C LFE Ls Rs",
                               .channelCount = 6,
                               .formatKey1 = 48000},
                              {.structSize = sizeof *streams,
                               .streamId = "2",
                               .trackLabels = "",
                               .channelCount = 2,
                               .formatKey1 = 48000,
                               .formatKey2 = 24}};
  KestrelRequest request = {.structSize = sizeof request,
                            .streamCount = 2,
                            .layoutDescription = description,
                            .surroundChannelOrder = "L C R Ls Rs LFE",
                            .streams = streams,
                            .streamStride = sizeof *streams,
                            .reportAll = 1,
                            .surroundCheck = 1};
  KestrelAnalysis* analysis = NULL;
  int32_t outcome = -1, services = 0, findings = 0;
  uint32_t total = 0;
  printf("analyse \"%s\": %d", description, kestrelAnalyse(&request, &analysis, NULL, NULL));
  kestrelOutcome(analysis, &outcome, &total);
  kestrelServiceCount(analysis, &services);
  kestrelFindingCount(analysis, &findings);
  printf(", outcome %d, total %u\n", outcome, total);
  for (int32_t i = 0; i < services; ++i) printService(analysis, i);
  for (int32_t i = 0; i < findings; ++i) printFinding(analysis, i);
  kestrelFreeAnalysis(analysis);
}

int main(void) {
  printf("interface %d\n", kestrelAbiVersion());
  printItems();
  analyse("T8=5.1 Mix,Stereo");
  analyse("T8=Stereo,5.1 Mix");
  analyse("T4=Stereo,-Stereo");
  int32_t item = -1;
  printf("item from code: %d", kestrelItemFromLayoutCode("8b", &item));
  printf(" %d\n", item);
  return 0;
}
