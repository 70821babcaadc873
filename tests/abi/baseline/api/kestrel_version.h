/* Made by the build from the one statement of the version, in CMakeLists.txt. */
#ifndef KESTREL_VERSION_H
#define KESTREL_VERSION_H

#define KESTREL_VERSION "0.1.0"
#define KESTREL_VERSION_MAJOR 0
#define KESTREL_VERSION_MINOR 1
#define KESTREL_VERSION_PATCH 0

/* The number of the plain C interface; see kestrelAbiVersion(). */
#define KESTREL_ABI 1

#endif /* KESTREL_VERSION_H */
