# What every target of this project has in common.

# Options for our own code: many warnings, and the arithmetic stays what the source
# says (no contraction into fused operations, no fast-math), so that results are the
# same to the last bit with every compiler. How vectors are passed between functions
# (psabi) is no matter here: functions on them are inlined.
add_library(aelk_options INTERFACE)
target_compile_options(aelk_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -ffp-contract=off -Wno-psabi)
# For our own compilers: those of others may have warnings that these have not.
if(AELK_WARNINGS_ARE_ERRORS)
  target_compile_options(aelk_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # There -Wconversion has changes of sign in it as well, other than with gcc.
  target_compile_options(aelk_options INTERFACE -Wno-sign-conversion)
endif()
target_compile_definitions(aelk_options INTERFACE QT_NO_FOREACH QT_NO_KEYWORDS)

if(AELK_SANITIZE)
  # Reports need line numbers and no more of the debug information.
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
  # Counts the branches that an input takes. Speed finds more than line numbers
  # that are right to the last one.
  target_compile_options(aelk_options INTERFACE -fsanitize=fuzzer-no-link -O2)
endif()

# gold, which comes with gcc's own linker, links a test program in a fifth of the time.
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

# For code that is no part of the product: its branches would guide libFuzzer to
# nothing. To be linked behind aelk_options.
add_library(aelk_uncounted INTERFACE)
if(AELK_LIBFUZZER)
  target_compile_options(aelk_uncounted INTERFACE -fno-sanitize=fuzzer-no-link)
endif()

# Compiles the given headers once for all sources of a library, with AELK_PRECOMPILE.
# A source that leaves out an include is noticed by the builds without.
function(aelk_precompile target)
  if(AELK_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# Compiles the headers that most tests include once, for all test programs on
# the given library: they are half of the time that a test takes to compile.
#
# Qt names each test's folders by macros, which no test here asks for; they are
# taken back, since programs share headers only if their macros agree.
set(AELK_TEST_OPTIONS -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
if(AELK_SANITIZE)
  # To compile a test takes longer than to run it.
  list(APPEND AELK_TEST_OPTIONS -O0)
endif()
function(aelk_add_test_headers name library)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Its headers alone are wanted.\n")
  add_library(${name} OBJECT ${source})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
  target_link_libraries(${name} PRIVATE aelk_options Qt6::Test ${library})
  target_compile_options(${name} PRIVATE ${AELK_TEST_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# A Qt Test program, run off screen.
# aelk_add_test(tst_name libraries...)
#
# The meta-object code is made for the one source that has any. AUTOMOC would scan
# for it and compile an empty source beside each program, which took a tenth of
# the time of a whole run.
set(AELK_TEST_ENVIRONMENT
  "QT_QPA_PLATFORM=offscreen"
  "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
  "UBSAN_OPTIONS=print_stacktrace=1")
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
