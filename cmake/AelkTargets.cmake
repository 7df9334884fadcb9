# What every target of this project has in common.

# Options for our own code: warnings are errors, and the arithmetic stays what
# the source says (no contraction into fused operations, no fast-math), so that
# results are the same to the last bit whatever the compiler's mood.
add_library(aelk_options INTERFACE)
target_compile_options(aelk_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
  -ffp-contract=off)
target_compile_definitions(aelk_options INTERFACE QT_NO_FOREACH QT_NO_KEYWORDS)

if(AELK_SANITIZE)
  target_compile_options(aelk_options INTERFACE
    -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=undefined,float-cast-overflow -fno-omit-frame-pointer -O1)
  target_link_options(aelk_options INTERFACE -fsanitize=address,undefined)
endif()

# Makes the build of a target fail when one of its sources includes a header
# of the widget side.
function(aelk_keep_free_of_widgets target)
  get_target_property(sources ${target} SOURCES)
  get_target_property(source_dir ${target} SOURCE_DIR)
  list(TRANSFORM sources PREPEND ${source_dir}/)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${target}-free-of-widgets.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} "-DSOURCES=${sources}" -DSTAMP=${stamp}
            -P ${PROJECT_SOURCE_DIR}/cmake/CheckCoreIncludes.cmake
    DEPENDS ${sources} ${PROJECT_SOURCE_DIR}/cmake/CheckCoreIncludes.cmake
    COMMENT "Checking that ${target} includes no widget header"
    VERBATIM)
  add_custom_target(${target}_free_of_widgets DEPENDS ${stamp})
  add_dependencies(${target} ${target}_free_of_widgets)
endfunction()

# A Qt Test program, run off screen.
# aelk_add_test(tst_name libraries...)
function(aelk_add_test name)
  add_executable(${name} ${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC OFF)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE aelk_options Qt6::Test ${ARGN})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
