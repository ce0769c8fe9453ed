# Build options (warnings, hardening, sanitizers) and zep_module, which defines the library of a module.

option(ZEP_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ZEP_WERROR "Make warnings errors: in CI, not for a user's newer compiler" OFF)
option(ZEP_PRECOMPILE "Precompile headers of Qt and the standard library; may hide missing includes" OFF)
option(ZEP_FUZZ "Build the fuzz targets as fuzzers, with all modules instrumented (needs clang)" OFF)

find_program(CCACHE ccache)
if(CCACHE)
    # What ccache asks for to keep files that use precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

add_library(zep_options INTERFACE)
target_compile_options(zep_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual $<$<BOOL:${ZEP_WERROR}>:-Werror>)
target_compile_definitions(zep_options INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# Hardening, as for Debian's own packages, and checked containers: the programs read foreign files. _FORTIFY_SOURCE needs
# optimization and hides errors from the sanitizers.
target_compile_options(zep_options INTERFACE -fstack-protector-strong
    -Werror=format-security $<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
target_compile_definitions(zep_options INTERFACE _GLIBCXX_ASSERTIONS)
if(WIN32) # the linker randomizes addresses by default; the stack protector is a library
    target_link_options(zep_options INTERFACE -fstack-protector-strong)
    target_compile_definitions(zep_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
else()
    target_compile_options(zep_options INTERFACE -fstack-clash-protection)
    target_link_options(zep_options INTERFACE -pie LINKER:-z,relro,-z,now)
endif()
if(ZEP_SANITIZE)
    # False positives: the sanitizers' instrumentation looks like uninitialized reads.
    target_compile_options(zep_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(zep_options INTERFACE -fsanitize=address,undefined)
endif()
if(ZEP_FUZZ)
    target_compile_options(zep_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(zep_options INTERFACE -fsanitize=address,undefined)
endif()

# zep_precompile(TARGET PART): TARGET uses the precompiled headers of PART, `core` or `widgets`.
if(ZEP_PRECOMPILE)
    set(precompiled_core <QDateTime> <QDir> <QFile> <QFileInfo> <QRegularExpression> <QStringList> <algorithm> <array> <cmath>
        <functional> <map> <memory> <optional> <string> <vector>)
    set(precompiled_widgets ${precompiled_core} <QApplication> <QBoxLayout> <QDialog> <QKeyEvent> <QLabel> <QLineEdit> <QPainter>
        <QTableView>)
    foreach(part core widgets)
        file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${part}.cpp CONTENT "")
        add_library(precompiled_${part} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${part}.cpp)
        set_target_properties(precompiled_${part} PROPERTIES AUTOMOC OFF)
        target_precompile_headers(precompiled_${part} PRIVATE ${precompiled_${part}})
    endforeach()
    target_link_libraries(precompiled_core PRIVATE zep_options Qt6::Core)
    target_link_libraries(precompiled_widgets PRIVATE zep_options Qt6::Widgets)
endif()
function(zep_precompile target part)
    if(ZEP_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM precompiled_${part})
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>) # for ccache
    endif()
endfunction()

# zep_module(NAME PATH USES module... LINKS target... SOURCES file...): the library of the module in the current folder,
# whose headers are included as "PATH/Header.h".
#
# A module only sees its own headers and those of the modules in USES: each module has its own include folder, so a
# forbidden include doesn't compile.
function(zep_module name path)
    cmake_parse_arguments(MODULE "" "" "USES;LINKS;PRIVATE_LINKS;SOURCES" ${ARGN})
    add_library(${name} STATIC ${MODULE_SOURCES})
    set(includes ${CMAKE_BINARY_DIR}/includes/${name})
    cmake_path(GET path PARENT_PATH parent)
    file(MAKE_DIRECTORY ${includes}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${includes}/${path} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${includes})
    target_link_libraries(${name} PUBLIC zep_options ${MODULE_LINKS} PRIVATE ${MODULE_USES} ${MODULE_PRIVATE_LINKS})
    # Signals and slots are a matter of widgets here; moc would take as long as compiling for the smaller modules.
    if(Qt6::Widgets IN_LIST MODULE_LINKS)
        zep_precompile(${name} widgets)
    else()
        set_target_properties(${name} PROPERTIES AUTOMOC OFF)
        zep_precompile(${name} core)
    endif()
endfunction()

# zep_own_files(): copies or links the files that belong to the program, rather than to a practice, next to the program
# built in this folder: some templates and the guide.
function(zep_own_files)
    foreach(report ZEP_Supp ZEP_EVO1 ZEP_EVO2)
        configure_file(${CMAKE_SOURCE_DIR}/reports/${report}.RPT ${CMAKE_CURRENT_BINARY_DIR}/${report}.RPT COPYONLY)
    endforeach()
    foreach(page guide report-templates.md)
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/docs/${page} ${CMAKE_CURRENT_BINARY_DIR}/${page} SYMBOLIC)
    endforeach()
endfunction()
