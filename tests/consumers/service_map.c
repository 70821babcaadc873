/* Prints which tracks of a file of eight mono streams carry which service. */
#include <kestrel/kestrel.h>
#include <stdio.h>

#define STREAMS 8

static void fill(KestrelStream* streams) {
  static const char* const ids[STREAMS] = {"1", "2", "3", "4", "5", "6", "7", "8"};
  static const char* const labels[STREAMS] = {"L", "R", "Ls", "Rs", "C", "LFE", "L", "R"};
  for (int index = 0; index < STREAMS; ++index) {
    streams[index] = (KestrelStream){.structSize = sizeof(KestrelStream),
                                     .streamId = ids[index],
                                     .trackLabels = labels[index],
                                     .channelCount = 1};
  }
}

static void printService(const KestrelAnalysis* analysis, int32_t index) {
  KestrelService service = {.structSize = sizeof service};
  const char* name = "";
  kestrelGetService(analysis, index, &service);
  kestrelStreamTypeName(service.streamType, &name);
  printf("%s: tracks", name);
  for (int32_t slot = 0; slot < service.trackCount; ++slot) {
    printf(" %d", (int)service.slots[slot].trackNumber);
  }
  printf("%s%s\n", service.label[0] != '\0' ? " " : "", service.label);
}

static void printFinding(const KestrelAnalysis* analysis, int32_t index) {
  char sentence[300];
  size_t needed = 0;
  if (kestrelFindingText(analysis, index, sentence, sizeof sentence, &needed) == KESTREL_OK) {
    puts(sentence);
  }
}

int main(void) {
  KestrelStream streams[STREAMS];
  fill(streams);
  const KestrelRequest request = {.structSize = sizeof request,
                                  .streamCount = STREAMS,
                                  .layoutDescription = "T8=5.1 Mix,Stereo;T4=Stereo,Stereo",
                                  .surroundChannelOrder = "L R C LFE Ls Rs",
                                  .streams = streams,
                                  .streamStride = sizeof streams[0],
                                  .surroundCheck = 1};
  KestrelAnalysis* analysis = NULL;
  const KestrelStatus status = kestrelAnalyse(&request, &analysis, NULL, NULL);
  if (status != KESTREL_OK) {
    puts(kestrelStatusText(status));
    return 1;
  }
  int32_t services = 0;
  int32_t findings = 0;
  kestrelServiceCount(analysis, &services);
  kestrelFindingCount(analysis, &findings);
  for (int32_t index = 0; index < services; ++index) printService(analysis, index);
  for (int32_t index = 0; index < findings; ++index) printFinding(analysis, index);
  kestrelFreeAnalysis(analysis);
  return 0;
}
