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

# The checking build: AddressSanitizer and UndefinedBehaviorSanitizer in every target of
# this project (program, libraries, tools, tests, benchmarks), any report stops the program,
# and every warning is an error. Set for the whole source tree, not only on tarvex_common,
# so that a target which does not link tarvex_common is checked too.
option(TARVEX_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer, warnings as errors" OFF)
if(TARVEX_SANITIZE)
  set(TARVEX_SANITIZE_FLAGS -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_compile_options(${TARVEX_SANITIZE_FLAGS} -Werror)
  add_link_options(${TARVEX_SANITIZE_FLAGS})
endif()
