# Compiler settings that every target of the project shares.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
find_program(FOM_CCACHE ccache)
if(FOM_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${FOM_CCACHE})
endif()
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Symbols in optimised builds too, cheap ones: a profile or a crash must name its functions.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

# A third of the time that most files take goes into the standard library's headers. With the option off, files must
# include for themselves what they use: lint reads them so.
option(FOM_PCH "Precompile the standard library's headers" ON)
function(fom_precompile target)
    if(FOM_PCH)
        target_precompile_headers(${target} PRIVATE <algorithm> <array> <cmath> <cstdint> <filesystem> <functional> <map>
            <memory> <optional> <span> <string> <string_view> <unordered_map> <utility> <vector> ${ARGN})
    endif()
endfunction()

add_library(fom_options INTERFACE)
target_compile_features(fom_options INTERFACE cxx_std_20)
set_target_properties(fom_options PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_EXTENSIONS OFF)
target_compile_options(fom_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(FOM_SANITIZE)
    target_compile_options(fom_options INTERFACE -fsanitize=${FOM_SANITIZE} -fno-sanitize-recover=all
        -fno-omit-frame-pointer -g1)
    target_link_options(fom_options INTERFACE -fsanitize=${FOM_SANITIZE})
endif()
if(FOM_LTO)
    set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()
