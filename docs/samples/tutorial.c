/* Asks the same question in plain C, and says why a file does not carry its services. */
#include <stdio.h>

#include "api/kestrel.h"

static void printFindings(const KestrelAnalysis* analysis) {
  int32_t count = 0;
  kestrelFindingCount(analysis, &count);
  for (int32_t i = 0; i < count; ++i) {
    char text[512];
    size_t needed = 0;
    if (kestrelFindingText(analysis, i, text, sizeof text, &needed) == KESTREL_OK) puts(text);
  }
}

int main(void) {
  KestrelStream streams[2] = {
      {.structSize = sizeof(KestrelStream), .streamId = "1", .trackLabels = "", .channelCount = 6},
      {.structSize = sizeof(KestrelStream), .streamId = "2", .trackLabels = "", .channelCount = 2}};
  streams[1].isPairCoded = 1;
  const KestrelRequest request = {.structSize = sizeof(KestrelRequest),
                                  .streamCount = 2,
                                  .layoutDescription = "T8=5.1 Mix,Stereo",
                                  .surroundChannelOrder = "L R C LFE Ls Rs",
                                  .streams = streams,
                                  .streamStride = sizeof(KestrelStream)};
  KestrelAnalysis* analysis = NULL;
  const KestrelStatus status = kestrelAnalyse(&request, &analysis, NULL, NULL);
  if (status != KESTREL_OK) {
    puts(kestrelStatusText(status));
    return 1;
  }
  int32_t outcome = 0;
  uint32_t trackTotal = 0;
  kestrelOutcome(analysis, &outcome, &trackTotal);
  printf("outcome %d, %u tracks\n", (int)outcome, (unsigned)trackTotal);
  printFindings(analysis);
  kestrelFreeAnalysis(analysis);
  return 0;
}
