# The one way to make a target: what every target of the project shares stands here and nowhere else.

# Warnings hold for the sources we wrote: C++ generated from QML does not pass -Wshadow.
set(VEXILO_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
    -Woverloaded-virtual)
if(VEXILO_WARNINGS_AS_ERRORS)
    list(APPEND VEXILO_WARNINGS -Werror)
endif()

# Definitions and sanitizers.
function(vexilo_flags target)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER
        $<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG>) # as all of Qt's users have, so that all are alike
    if(VEXILO_SANITIZERS)
        target_compile_options(${target} PRIVATE -fsanitize=${VEXILO_SANITIZERS}
            -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${VEXILO_SANITIZERS})
    endif()
endfunction()

# Headers that most sources include may be precompiled once for all targets. That every source
# includes what it needs is seen by builds without, and by script/lint --analyze.
option(VEXILO_PRECOMPILED_HEADERS "Precompile the headers of libraries" OFF)
if(VEXILO_PRECOMPILED_HEADERS)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON) # as Qt asks of its users, so that all are alike
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled.cpp CONTENT "// Empty.\n")
    add_library(vexilo_precompiled OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
    # With no more definitions than every target has, or the compiler would not use it.
    target_include_directories(vexilo_precompiled SYSTEM PRIVATE
        $<TARGET_PROPERTY:Qt6::Quick,INTERFACE_INCLUDE_DIRECTORIES>)
    target_compile_options(vexilo_precompiled PRIVATE -Wpedantic)
    vexilo_flags(vexilo_precompiled)
    target_precompile_headers(vexilo_precompiled PRIVATE
        <algorithm> <array> <chrono> <functional> <map> <memory> <optional> <ranges> <set> <span>
        <string> <utility> <variant> <vector>
        <QByteArray> <QCoreApplication> <QDateTime> <QDir> <QFile> <QHash> <QList> <QMap> <QObject>
        <QString> <QStringBuilder> <QStringList> <QTemporaryDir> <QTimer> <QUrl> <QUuid> <QVariant>
        <QGuiApplication> <QQmlEngine> <QQuickItem>)
endif()

function(vexilo_configure target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;PUBLIC;PRIVATE")
    target_sources(${target} PRIVATE ${arg_SOURCES})
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    # Sources with options of their own are compiled one by one, and so show that each includes what
    # it needs. Sanitizers need no warnings a second time: reading many sources at once saves minutes.
    if(NOT VEXILO_SANITIZERS)
        set_source_files_properties(${arg_SOURCES} PROPERTIES COMPILE_OPTIONS "${VEXILO_WARNINGS}")
    endif()
    vexilo_flags(${target})
    if(VEXILO_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} REUSE_FROM vexilo_precompiled)
    endif()
endfunction()

# vexilo_library(name SOURCES ... [PUBLIC targets] [PRIVATE targets])
# A static library whose headers stand beside its sources. Only PUBLIC targets are seen by its users.
function(vexilo_library target)
    add_library(${target} STATIC)
    target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    vexilo_configure(${target} ${ARGN})
endfunction()

# vexilo_qml_module(name URI uri [SOURCES ...] [QML_FILES ...] [IMPORTS modules] [LATE_IMPORTS modules]
#     [PUBLIC targets] [PRIVATE targets])
# A library with a QML module: compiled ahead of time and linked into the program. The modules of
# IMPORTS are loaded with it, those of LATE_IMPORTS not before a view that imports them.
function(vexilo_qml_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI"
        "SOURCES;QML_FILES;RESOURCES;PUBLIC;PRIVATE;IMPORTS;LATE_IMPORTS")
    qt_add_library(${target} STATIC)
    target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    qt_add_qml_module(${target}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt-project.org/imports
        IMPORTS ${arg_IMPORTS}
        DEPENDENCIES QtQuick ${arg_IMPORTS} ${arg_LATE_IMPORTS}
        QML_FILES ${arg_QML_FILES}
        RESOURCES ${arg_RESOURCES})
    vexilo_configure(${target} SOURCES ${arg_SOURCES} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
endfunction()

# Runs moc on every source of a test. Finding out whether that is needed, as AUTOMOC does, takes
# thirty times as long as moc itself, and there are many tests.
function(vexilo_test_moc target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_moc)
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM LAST_ONLY stem)
        if(source MATCHES "\\.h$")
            qt_generate_moc(${source} ${folder}/moc_${stem}.cpp TARGET ${target})
            target_sources(${target} PRIVATE ${folder}/moc_${stem}.cpp)
        else()
            qt_generate_moc(${source} ${folder}/${stem}.moc TARGET ${target})
            target_sources(${target} PRIVATE ${folder}/${stem}.moc)
        endif()
    endforeach()
    target_include_directories(${target} PRIVATE ${folder})
endfunction()

set(VEXILO_TEST_ENVIRONMENT QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 LANGUAGE= QT_QUICK_BACKEND=software)

# vexilo_test(name SOURCES ... [LINKS targets])
# A Qt Test program, run by CTest on a platform without a display.
function(vexilo_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    qt_add_executable(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests
        AUTOMOC OFF)
    vexilo_configure(${name} SOURCES ${arg_SOURCES} PRIVATE Qt6::Test ${arg_LINKS})
    vexilo_test_moc(${name} ${arg_SOURCES})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120 ENVIRONMENT "${VEXILO_TEST_ENVIRONMENT}")
endfunction()

# vexilo_test_again(test suffix [ENVIRONMENT variables] [ARGUMENTS arguments])
# The same program as another test, called test_suffix, in which the variables have other values.
function(vexilo_test_again test suffix)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "ENVIRONMENT;ARGUMENTS")
    set(name ${test}_${suffix})
    add_test(NAME ${name} COMMAND ${test} ${arg_ARGUMENTS})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120
        ENVIRONMENT "${VEXILO_TEST_ENVIRONMENT};${arg_ENVIRONMENT}")
endfunction()
