# Settings shared by every target of the project (our own code only: GoogleTest
# is built with its own flags).

# Warnings and the Unicode build, as the framework expects.
add_library(tesvor_settings INTERFACE)
target_compile_definitions(tesvor_settings INTERFACE
  UNICODE _UNICODE _WIN32_WINNT=0x0601 WINVER=0x0601 NOMINMAX)
target_compile_options(tesvor_settings INTERFACE -Wall -Wextra)
# Our own code stays warning-free: a warning fails the build (CI builds with this).
option(TESVOR_WERROR "Treat warnings in the project's own code as errors" ON)
if(TESVOR_WERROR)
  target_compile_options(tesvor_settings INTERFACE $<$<COMPILE_LANGUAGE:C,CXX>:-Werror>)
endif()

# Copy the MinGW runtime DLLs next to the binaries (and install them), so that a
# program runs under Wine straight from the build tree or an install prefix.
set(TESVOR_RUNTIME_DLLS)
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                  OUTPUT_VARIABLE dll_path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${dll_path}" AND EXISTS "${dll_path}")
    list(APPEND TESVOR_RUNTIME_DLLS "${dll_path}")
  endif()
endforeach()
file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
file(COPY ${TESVOR_RUNTIME_DLLS} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})

# Converts a Linux path into the path a Windows program sees under Wine (drive Z:).
function(tesvor_wine_path out path)
  string(REPLACE "/" "\\\\" win "${path}")
  set(${out} "Z:${win}" PARENT_SCOPE)
endfunction()

set(TESVOR_WINE_RUN ${CMAKE_SOURCE_DIR}/scripts/wine-run)
