# Options and functions that the targets of this project share.

# Compiler options for our own code. They turn on many warnings and keep the arithmetic
# as written in the source (no contraction into fused operations, no fast-math), so that
# the optimiser does not change results. -Wno-psabi turns off warnings about the
# calling convention for vectors: it does not matter, because functions with vectors are
# inlined.
add_library(aelk_options INTERFACE)
target_compile_options(aelk_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -ffp-contract=off -Wno-psabi)
# For development only: the compiler of a user can report warnings that our compilers do not.
if(AELK_WARNINGS_ARE_ERRORS)
  target_compile_options(aelk_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # In clang, unlike gcc, -Wconversion includes sign conversions.
  target_compile_options(aelk_options INTERFACE -Wno-sign-conversion)
endif()
target_compile_definitions(aelk_options INTERFACE QT_NO_FOREACH QT_NO_KEYWORDS)

if(AELK_SANITIZE)
  # -g1: the reports need line numbers, but no other debug information.
  target_compile_options(aelk_options INTERFACE
    -fsanitize=address,undefined,float-cast-overflow
    -fno-sanitize-recover=undefined,float-cast-overflow
    -fno-omit-frame-pointer -O1 -g1)
  target_link_options(aelk_options INTERFACE -fsanitize=address,undefined)
endif()

if(AELK_LIBFUZZER)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "AELK_LIBFUZZER needs clang; CMAKE_CXX_COMPILER is ${CMAKE_CXX_COMPILER}")
  endif()
  # Instruments the code so that libFuzzer can record which branches an input reaches. -O2 is
  # used because faster runs find more errors; it makes some line numbers in reports inexact.
  target_compile_options(aelk_options INTERFACE -fsanitize=fuzzer-no-link -O2)
endif()

# gold links a test program in a fifth of the time that the default linker needs. Both
# linkers are in the package binutils.
if(AELK_QUICK_LINK)
  include(CheckLinkerFlag)
  check_linker_flag(CXX -fuse-ld=gold AELK_HAS_GOLD)
  if(AELK_HAS_GOLD)
    add_link_options(-fuse-ld=gold)
  endif()
endif()

if(AELK_COVERAGE)
  target_link_options(aelk_options INTERFACE --coverage)
endif()

# For code that is not part of the program, and whose branches libFuzzer should ignore. Link
# aelk_uninstrumented after aelk_options, because it cancels a flag of aelk_options.
add_library(aelk_uninstrumented INTERFACE)
if(AELK_LIBFUZZER)
  target_compile_options(aelk_uninstrumented INTERFACE -fno-sanitize=fuzzer-no-link)
endif()

# With AELK_PRECOMPILE, precompiles the given headers for all sources of a library. If a
# source lacks the include of such a header, only builds without AELK_PRECOMPILE fail.
function(aelk_precompile target)
  if(AELK_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# Compiler options of all test programs. Qt defines macros with the folders of each test. They
# are undefined here because programs can share precompiled headers only if their macros are
# equal; no test uses them.
set(AELK_TEST_OPTIONS -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
if(AELK_SANITIZE)
  # -O0 instead of -O1, because compiling a test takes longer than running it.
  list(APPEND AELK_TEST_OPTIONS -O0)
endif()

# Adds the library `name`. It precompiles the given headers, which most tests include, once
# for all test programs that use `library`. Otherwise these headers would take half of the
# compile time of each test.
function(aelk_add_test_headers name library)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Only for its precompiled headers.\n")
  add_library(${name} OBJECT ${source})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
  target_link_libraries(${name} PRIVATE aelk_options Qt6::Test ${library})
  target_compile_options(${name} PRIVATE ${AELK_TEST_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# Environment of all test programs. They run without a display.
set(AELK_TEST_ENVIRONMENT
  "QT_QPA_PLATFORM=offscreen"
  "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
  "UBSAN_OPTIONS=print_stacktrace=1")

# Adds a Qt Test program.
# aelk_add_test(tst_name libraries...)
#
# moc runs only on the single source of the test. AUTOMOC would search for more sources and
# compile an additional empty source for each program, which took a tenth of the time of
# a complete test run.
function(aelk_add_test name)
  qt_generate_moc(${name}.cpp ${name}.moc)
  add_executable(${name} ${name}.cpp ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
  target_include_directories(${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${name} PRIVATE aelk_options Qt6::Test ${ARGN})
  target_compile_options(${name} PRIVATE ${AELK_TEST_OPTIONS})
  if("aelk_gui" IN_LIST ARGN)
    target_precompile_headers(${name} REUSE_FROM aelk_gui_test_headers)
  else()
    target_precompile_headers(${name} REUSE_FROM aelk_core_test_headers)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${AELK_TEST_ENVIRONMENT}")
endfunction()
