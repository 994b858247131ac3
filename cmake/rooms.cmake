# One static library a room. Warnings are errors everywhere.
add_library(orv_options INTERFACE)
target_compile_features(orv_options INTERFACE cxx_std_20)
target_include_directories(orv_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(orv_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Werror;-Wshadow;-Wnon-virtual-dtor;-Woverloaded-virtual>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Version 12 sees overlaps in inlined string assignments where none can be.
  target_compile_options(orv_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(ORV_SANITIZE)
  target_compile_options(orv_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orv_options INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(orv_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(WIN32)
  # Debug information of an older version: the debugger under Wine shows lines with it and offsets only without.
  # Its paths begin at the project's folder: what ships is the same wherever it was built. A test never ships.
  target_compile_options(orv_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-gdwarf-4;-fstack-protector-strong;$<$<NOT:$<BOOL:$<TARGET_PROPERTY:ORV_TEST>>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>>)
  target_compile_definitions(orv_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 WINVER=0x0A00 _GLIBCXX_ASSERTIONS)
  target_link_options(orv_options INTERFACE -static -fstack-protector-strong -Wl,--no-insert-timestamp,--enable-stdcall-fixup,--dynamicbase,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(orv_options INTERFACE -Wl,--high-entropy-va)
  endif()
endif()

# orv_room(name SOURCES file... [USES target...])
function(orv_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC orv_options ${ARG_USES})
endfunction()

# orv_test(name SOURCES file... USES target...): one test program. The test runner runs every program in tests/.
function(orv_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE orv_options ${ARG_USES} GTest::gmock GTest::gtest GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE ORV_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  if(WIN32)
    # What is tested is compiled as it ships; optimising the tests themselves takes almost half of their time to build.
    target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0;-g1>)
  endif()
  set_target_properties(${name} PROPERTIES ORV_TEST ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/bin)
endfunction()

# Header-only libraries of the build machine, offered to the cross compilers without the rest of its headers.
function(orv_header_library target)
  set(dir ${PROJECT_BINARY_DIR}/third_party/${target})
  file(MAKE_DIRECTORY ${dir})
  foreach(entry ${ARGN})
    if(NOT EXISTS /usr/include/${entry})
      message(FATAL_ERROR "/usr/include/${entry} is missing: run ./dev once, it installs what is needed")
    endif()
    file(CREATE_LINK /usr/include/${entry} ${dir}/${entry} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${dir})
endfunction()

# orv_version_record(target description manifest): what the system shows of a program, and how it runs it.
function(orv_version_record target ORV_DESCRIPTION ORV_MANIFEST)
  set(ORV_PROGRAM ${target})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/program.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}.rc PROPERTIES OBJECT_DEPENDS ${ORV_MANIFEST})
endfunction()

# orv_ship(target [DESCRIPTION text] [MANIFEST file]): debug information goes into a file beside the program, which finds it
# there; what ships stays small. Its imports are bound to the system's folder. The map says what was linked in.
function(orv_ship target)
  cmake_parse_arguments(ARG "" "DESCRIPTION;MANIFEST" "" ${ARGN})
  if(NOT WIN32)
    return()
  endif()
  find_program(PYTHON3_EXECUTABLE python3 REQUIRED)
  if(ARG_DESCRIPTION)
    if(NOT ARG_MANIFEST)
      set(ARG_MANIFEST ${PROJECT_SOURCE_DIR}/cmake/program.manifest)
    endif()
    orv_version_record(${target} "${ARG_DESCRIPTION}" ${ARG_MANIFEST})
  endif()
  target_link_options(${target} PRIVATE -Wl,-Map=$<TARGET_FILE:${target}>.map)
  target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32/load_config.cpp)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/enter_load_config.py)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${PYTHON3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/enter_load_config.py ${CMAKE_NM} $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
    COMMAND ${CMAKE_OBJCOPY} --strip-debug --strip-unneeded --add-gnu-debuglink=$<TARGET_FILE:${target}>.debug
            $<TARGET_FILE:${target}>
    VERBATIM)
endfunction()
