/* Loads the library by its name, as a host does that works without it too. */
#include <stdint.h>
#include <stdio.h>

#ifdef _WIN32
#include <windows.h>
#define LIBRARY "libkestrel-dll64.dll"
static void* load(void) { return (void*)LoadLibraryA(LIBRARY); }
static void* function(void* library, const char* name) {
  return (void*)GetProcAddress((HMODULE)library, name);
}
#else
#include <dlfcn.h>
#define LIBRARY "libkestrel-dll64.so"
static void* load(void) { return dlopen(LIBRARY, RTLD_NOW | RTLD_LOCAL); }
static void* function(void* library, const char* name) { return dlsym(library, name); }
#endif

typedef int32_t ItemFromLayoutCode(const char* code, int32_t* item);
typedef int32_t ItemName(int32_t item, const char** name);

int main(void) {
  void* const library = load();
  if (library == NULL) {
    puts("There is no " LIBRARY " here.");
    return 1;
  }
  ItemFromLayoutCode* const itemFromLayoutCode =
      (ItemFromLayoutCode*)function(library, "kestrelItemFromLayoutCode");
  ItemName* const itemName = (ItemName*)function(library, "kestrelItemName");
  int32_t item = -1;
  const char* name = "";
  itemFromLayoutCode("8b", &item);
  itemName(item, &name);
  printf("8b is item %d, %s\n", (int)item, name);
  return 0;
}
