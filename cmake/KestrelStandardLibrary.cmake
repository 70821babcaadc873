# Which C++ standard library the compiler uses, LIBSTDCXX or MSVC. The version header names it, so that
# the C++ headers can refuse a host of another one.
include(CheckCXXSymbolExists)
check_cxx_symbol_exists(__GLIBCXX__ string KESTREL_USES_LIBSTDCXX)
check_cxx_symbol_exists(_MSVC_STL_VERSION string KESTREL_USES_MSVC)

if(KESTREL_USES_LIBSTDCXX)
  set(KESTREL_STANDARD_LIBRARY LIBSTDCXX)
elseif(KESTREL_USES_MSVC)
  set(KESTREL_STANDARD_LIBRARY MSVC)
else()
  message(FATAL_ERROR "Kestrel's records need the wide strings of libstdc++ or of MSVC's library")
endif()
