/* A programme as a table of its audio streams: what a host has after it opened a media file. */
#ifndef PROGRAMME_H
#define PROGRAMME_H

#include <kestrel/kestrel.h>
#include <stdio.h>

#define MAX_STREAMS 64
#define MAX_LINE 512

typedef struct Programme {
  KestrelStream streams[MAX_STREAMS];
  int32_t count;
  char lines[MAX_STREAMS][MAX_LINE]; /* the streams' texts point into these */
} Programme;

/* A line for each stream: id, channels, sampling rate, bits, "pcm" or "dolby-e", labels. Lines that
 * begin with "#" and empty ones are left out. Returns 0, or the number of a line that is not so. */
int readProgramme(FILE* file, Programme* programme);

#endif
