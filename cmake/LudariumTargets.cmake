# What every target of the project shares: warnings, sanitizers, a precompiled header of the common Qt types,
# a compiler cache and a fast linker where the machine has them.

find_program(LUDARIUM_CCACHE ccache)
if(LUDARIUM_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${LUDARIUM_CCACHE})
endif()
find_program(LUDARIUM_MOLD mold)
if(LUDARIUM_MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-fuse-ld=mold)
endif()

if(UNIX AND NOT APPLE)
    # A program loads only the libraries that it calls: the command line has no use for those of the window and pads.
    add_link_options(LINKER:--as-needed)
endif()

if(LUDARIUM_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    # Line tables are what a sanitizer report needs; full debug information doubles the build time.
    add_compile_options(-g1)
endif()

add_compile_definitions(
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_KEYWORDS QT_NO_FOREACH
    LUDARIUM_VERSION="${PROJECT_VERSION}")

# Warnings as errors, and the include root: src/, so that an include names its room ("Host/HostPaths.h").
function(ludarium_target TARGET)
    set_target_properties(${TARGET} PROPERTIES LINKER_LANGUAGE CXX)
    target_compile_options(${TARGET} PRIVATE -Wall -Wextra -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # g++ 12 takes the value of an empty std::optional for a variable that is read uninitialised, at -O3 only.
        target_compile_options(${TARGET} PRIVATE -Wno-maybe-uninitialized)
    endif()
    target_include_directories(${TARGET} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

function(ludarium_pch TARGET)
    target_precompile_headers(${TARGET} PRIVATE
        <QtCore/QString> <QtCore/QList> <QtCore/QHash> <QtCore/QDateTime> <QtCore/QObject> <QtCore/QVariant>
        <QtCore/QProcess> <QtCore/QDir> <QCoro/QCoroTask> <optional> <memory> <functional>)
endfunction()

# Every source below a folder of src/, found at configure time.
function(ludarium_sources OUT)
    set(PATTERNS)
    foreach(DIR IN LISTS ARGN)
        list(APPEND PATTERNS ${CMAKE_CURRENT_SOURCE_DIR}/${DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${DIR}/*.h)
    endforeach()
    file(GLOB_RECURSE FOUND CONFIGURE_DEPENDS ${PATTERNS})
    set(${OUT} ${FOUND} PARENT_SCOPE)
endfunction()
