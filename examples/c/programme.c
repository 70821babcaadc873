#include "programme.h"

#include <string.h>

/* Reads a line that ends within its room; anything longer is no stream. */
static int readStream(char* line, KestrelStream* stream) {
  const size_t length = strcspn(line, "\r\n");
  char coding[9] = ""; /* one character more than the longest */
  int id = 0;          /* where the id ends */
  int labels = (int)length;
  if (length == MAX_LINE - 1) return 0;
  line[length] = '\0';
  *stream = (KestrelStream){.structSize = sizeof *stream, .streamId = line};
  if (sscanf(line, "%*s%n %d %d %d %8s %n", &id, &stream->channelCount, &stream->formatKey1,
             &stream->formatKey2, coding, &labels) != 4) {
    return 0;
  }
  line[id] = '\0';
  stream->trackLabels = line + labels;
  stream->isPairCoded = strcmp(coding, "dolby-e") == 0;
  stream->formatKey3 = stream->isPairCoded;
  return stream->isPairCoded || strcmp(coding, "pcm") == 0;
}

int readProgramme(FILE* file, Programme* programme) {
  char beyond[MAX_LINE];
  programme->count = 0;
  for (int number = 1;; ++number) {
    const int full = programme->count == MAX_STREAMS;
    char* line = full ? beyond : programme->lines[programme->count];
    if (fgets(line, MAX_LINE, file) == NULL) return 0;
    if (strchr("#\r\n", line[0]) != NULL) continue;
    if (full || !readStream(line, &programme->streams[programme->count])) return number;
    programme->streams[programme->count].group = programme->count; /* each is one of its own */
    ++programme->count;
  }
}
