# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT

# Compiler settings of all targets.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

# Dev: builds quickly, yet fast enough for the simulated year; assertions stay on.
set(CMAKE_CXX_FLAGS_DEV "-O1 -g1 -DQT_FORCE_ASSERTS")
set(CMAKE_EXE_LINKER_FLAGS_DEV "")
# Links in a quarter of the default linker's time.
find_program(MOLD mold)
if(MOLD)
    set(CMAKE_EXE_LINKER_FLAGS_DEV "-fuse-ld=mold")
endif()

# Release: not -O3, because its larger code would take memory for little gain in a mostly sleeping program. Hardened as
# distributions do; relocated data is read-only after the start. Every object is position-independent; there are no
# shared libraries, and older versions of Qt add -fPIC themselves.
include(CheckCXXCompilerFlag)
set(QUILLET_HARDENING "-fstack-protector-strong -fstack-clash-protection")
check_cxx_compiler_flag(-fcf-protection QUILLET_HAS_CONTROL_FLOW_PROTECTION)
if(QUILLET_HAS_CONTROL_FLOW_PROTECTION)
    string(APPEND QUILLET_HARDENING " -fcf-protection")
endif()
# The sanitizers check these calls and more.
if(NOT QUILLET_SANITIZE)
    set(level 3)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12)
        set(level 2)
    endif()
    string(APPEND QUILLET_HARDENING " -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level}")
endif()
set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG -fPIE ${QUILLET_HARDENING}")
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG -fPIE ${QUILLET_HARDENING}")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE "-pie -Wl,-z,relro,-z,now,-z,noexecstack")

find_program(CCACHE ccache)
if(CCACHE)
    # ccache caches precompiled headers only if it may ignore their defines and times; checkouts share results only if
    # paths are relative to the checkout.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
# Some libraries require it, and all files share precompiled headers.
add_compile_options(-pthread)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING)

if(QUILLET_SANITIZE)
    add_compile_options(-fsanitize=${QUILLET_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUILLET_SANITIZE})
    if(QUILLET_SANITIZE MATCHES undefined)
        # Qt passes slots of a private signal a reference bound to null, and never uses it; dereferencing a null pointer
        # still ends the program.
        add_compile_options(-fno-sanitize=null)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC 12 reports uninitialised coroutine frames once the sanitizers rewrite them.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()
if(QUILLET_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# Several files of a target are compiled as one: their headers are read and their templates instantiated once, so that
# a build from nothing takes a third of the time. The names in a target's unnamed namespaces must differ for that.
# With larger batches a change of one file would take too long.
if(QUILLET_UNITY)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
    # Keeps the checkout's path out of __FILE__, so that other checkouts can share ccache's results.
    add_compile_options(-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC warns because it takes the included sources for headers.
        add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
    endif()
endif()

# The headers that nearly every file includes are precompiled twice: `core` for files without windows, `widgets` for
# those with. Their targets must not define macros that a user lacks, or the compiler could not reuse the headers. They
# do not include whole Qt modules, since loading those takes twice as long as parsing what a file needs; nor Qt Test,
# which depends on each test's own folder.
if(QUILLET_PRECOMPILE)
    set(values <qcoro/qcorotask.h> <algorithm> <array> <chrono> <cmath> <expected> <functional> <map> <memory>
        <optional> <vector> <QByteArray> <QCoreApplication> <QDateTime> <QDeadlineTimer> <QDir> <QElapsedTimer>
        <QFile> <QHash> <QList> <QObject> <QPointer> <QSet> <QString> <QStringList> <QTimer> <QTimeZone> <QUrl>)
    foreach(kind core widgets)
        file(CONFIGURE OUTPUT headers-${kind}.cpp CONTENT "")
        add_library(headers-${kind} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/headers-${kind}.cpp)
        set_target_properties(headers-${kind} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    endforeach()
    target_link_libraries(headers-core PRIVATE Qt6::Core QCoro6::Core)
    target_precompile_headers(headers-core PRIVATE ${values})
    target_link_libraries(headers-widgets PRIVATE Qt6::Widgets QCoro6::Core)
    target_precompile_headers(headers-widgets PRIVATE ${values} <QAbstractButton> <QApplication> <QBoxLayout>
        <QKeyEvent> <QLabel> <QPainter> <QPushButton> <QScreen> <QScrollArea> <QScrollBar> <QWidget> <QWindow>)
endif()

# quillet_precompile(<target> core|widgets)
function(quillet_precompile target kind)
    if(QUILLET_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM headers-${kind})
    endif()
endfunction()

# Reruns moc when a file joins or leaves one of the targets. CMake 3.25 keeps using its old list of files, so that an
# incremental build of a newer checkout would fail to link. Call it once all files of the targets are known.
function(quillet_follow_sources)
    foreach(target IN LISTS ARGN)
        get_target_property(sources ${target} SOURCES)
        get_target_property(headers ${target} HEADER_SET)
        list(APPEND sources ${headers})
        get_target_property(folder ${target} BINARY_DIR)
        set(known "${folder}/${target}_sources.txt")
        set(before "")
        if(EXISTS "${known}")
            file(READ "${known}" before)
        endif()
        if(NOT before STREQUAL "${sources}")
            file(REMOVE "${folder}/${target}_autogen/timestamp")
            file(WRITE "${known}" "${sources}")
        endif()
    endforeach()
endfunction()
