/* A host in C, which brings no C++ run-time along: loads a library, makes a first call, unloads it,
 * and prints the nanoseconds that this took.
 *
 * usage: load_once LIBRARY FUNCTION      FUNCTION takes nothing and returns an int or a pointer
 */
#define _POSIX_C_SOURCE 199309L
#include <dlfcn.h>
#include <stdio.h>
#include <time.h>

static long long now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const long long start = now();
  void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) return 1;
  int (*function)(void) = NULL;
  *(void**)&function = dlsym(library, arguments[2]);
  if (function == NULL || function() == 0) return 1;
  dlclose(library);
  printf("%lld\n", now() - start);
  return 0;
}
