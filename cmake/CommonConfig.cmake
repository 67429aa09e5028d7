# Settings every Tarvex target shares.
add_library(tarvex_common INTERFACE)
target_compile_features(tarvex_common INTERFACE cxx_std_20)
target_compile_options(tarvex_common INTERFACE -Wall -Wextra -Wno-unused-parameter)
target_compile_definitions(tarvex_common INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CONTEXTLESS_CONNECT
  QT_NO_KEYWORDS)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()
