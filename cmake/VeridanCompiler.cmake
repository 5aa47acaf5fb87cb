# What the compiler is asked for. Warnings are errors, but not with MSVC, which compiles the product elsewhere: a
# warning that nobody here can see must not stop that.

add_library(veridan_warnings INTERFACE)
target_compile_definitions(veridan_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII
  QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(MSVC)
  # The sources are UTF-8, and the standard holds to the letter.
  add_compile_options(/utf-8 /permissive- /Zc:__cplusplus)
  # Constant conditions are where a template or a platform decides (4127).
  target_compile_options(veridan_warnings INTERFACE /W4 /wd4127)
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(veridan_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wformat=2 -Wundef -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>)
endif()

# Sources are compiled several at a time, which spares reading the same headers again; `./dev windows check` holds that
# each of them also stands alone.
option(VERIDAN_UNITY "Compile several sources at a time" ON)
set(CMAKE_UNITY_BUILD ${VERIDAN_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
if(VERIDAN_UNITY AND NOT MSVC)
  # A type of an unnamed namespace inside a source is fine; the compiler takes that source for a header here.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

# The quickest linker that is there; what it makes is the same.
find_program(VERIDAN_MOLD mold)
if(VERIDAN_MOLD AND NOT WIN32 AND NOT MSVC)
  add_link_options(-fuse-ld=mold)
endif()
