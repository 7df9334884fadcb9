# Checks the includes of all sources in a folder; fails if one breaks the rules below.
# cmake -DTREE=src [-DSTAMP=file to touch on success] -P CheckIncludes.cmake
cmake_minimum_required(VERSION 3.25)

# Dependencies point in one direction. For each folder, this list states the other folders
# whose headers it may include. A folder that is not listed must not contain code.
set(app_may_include panel rows display analysis data)
set(panel_may_include rows display analysis data)
set(rows_may_include display analysis data)
set(display_may_include analysis data)
set(analysis_may_include data)
set(data_may_include "")

# Sources in other folders that implement members of the panel. For them the rules of the
# panel apply.
set(panel_members "^(analysis|display)/FourPs[A-Za-z]*\\.cpp$")

# The folders of the core and the Qt headers that they may include. Headers of Qt Core can
# be added; headers of Qt Gui and Qt Widgets must not be used in the core.
set(core analysis data)
set(core_qt_headers
  QArrayDataPointer QByteArray QByteArrayView QChar QDebug QFile QFileDevice QFileInfo
  QIODevice QList QObject QPointF QRect QRectF QString QStringDecoder QStringEncoder
  QStringList QStringView QTextStream QtEndian QtGlobal QtMath)

# Returns the folder of a source. A form, and the header generated from it, belong to the
# folder that contains the class of the same name.
function(folder_of path result)
  if(path MATCHES "^(forms/|ui_)([A-Za-z0-9_]+)\\.(ui|h)$")
    file(GLOB path RELATIVE ${TREE} "${TREE}/*/${CMAKE_MATCH_2}.h")
  endif()
  string(REGEX MATCH "^[^/;]+/" folder "${path}")
  string(REPLACE "/" "" folder "${folder}")
  set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# Returns the names that a source or a form includes, without quotes or brackets.
function(includes_of path result)
  file(READ ${TREE}/${path} text)
  # Reads the text as the compiler does: removes a byte order mark and joins continued lines;
  # vertical tabs and form feeds are white space, and a carriage return ends a line.
  string(ASCII 239 187 191 byte_order_mark)
  string(ASCII 11 vertical_tab)
  string(ASCII 12 form_feed)
  string(REGEX REPLACE "${byte_order_mark}|\\\\\r?\n" "" text "\n${text}")
  string(REGEX REPLACE "${vertical_tab}|${form_feed}" " " text "${text}")
  string(REPLACE "\r" "\n" text "${text}")
  # Removes the characters that would split or join elements of a CMake list.
  string(REGEX REPLACE ";|\\[|\\]" " " text "${text}")
  if(path MATCHES "\\.ui$")
    set(include "<(header|include)( [^>]*)?>([^<]*)<")
  else()
    # The first group is the end of a comment before the #.
    set(include "\n([^\n]*[*]/)?[ \t]*#[ \t]*(include|include_next|import)[ \t]*([^\n]*)")
  endif()
  string(REGEX MATCHALL "${include}" lines "${text}")
  set(names)
  foreach(line IN LISTS lines)
    string(REGEX MATCH "${include}" line "${line}")
    set(name "${CMAKE_MATCH_3}")
    if(name MATCHES "^(\"([^\"]*)\"|<([^>]*)>)")
      set(name "${CMAKE_MATCH_2}${CMAKE_MATCH_3}")
    endif()
    list(APPEND names "${name}")
  endforeach()
  set(${result} "${names}" PARENT_SCOPE)
endfunction()

# Returns the reason why a source must not include a name; empty if it may include it.
function(refusal path name result)
  set(${result} "" PARENT_SCOPE)
  folder_of("${path}" from)
  if(path MATCHES "${panel_members}")
    set(from panel)
  endif()
  if(name MATCHES "^[a-z0-9_]+$" OR name MATCHES "^[a-z]+intrin\\.h$")
    return() # a header of the standard library or of the compiler's intrinsics
  endif()
  if(name MATCHES "^Q[A-Za-z0-9]+$")
    if(from IN_LIST core AND NOT name IN_LIST core_qt_headers)
      set(${result} "this Qt header is not allowed in the core" PARENT_SCOPE)
    endif()
    return()
  endif()
  if(NOT name MATCHES "^([a-z]+/|ui_)[A-Za-z0-9]+\\.h$")
    set(${result} "expected a standard header, a Qt header, folder/Name.h or ui_Name.h"
        PARENT_SCOPE)
    return()
  endif()
  folder_of("${name}" to)
  set(allowed ${from} ${${from}_may_include})
  if(name MATCHES "^ui_")
    set(allowed ${from}) # only the folder of the class may include the header of its form
    list(REMOVE_ITEM allowed ${core})
  endif()
  if(NOT to IN_LIST allowed)
    if(NOT allowed)
      set(allowed "none")
    endif()
    list(JOIN allowed ", " allowed)
    set(${result} "it is in ${to}; allowed: ${allowed}" PARENT_SCOPE)
  endif()
endfunction()

file(GLOB_RECURSE sources RELATIVE ${TREE} ${TREE}/*)
set(faults "")
foreach(path IN LISTS sources)
  if(path MATCHES "\\.(ts|qrc|txt)$")
    continue()
  elseif(NOT path MATCHES "\\.(h|cpp|ui)$")
    string(APPEND faults "\n  ${path}: sources end in .h, .cpp or .ui")
    continue()
  endif()
  folder_of("${path}" folder)
  if(NOT DEFINED ${folder}_may_include)
    string(APPEND faults "\n  ${path}: there is no rule for its folder")
    continue()
  endif()
  includes_of("${path}" names)
  foreach(name IN LISTS names)
    refusal("${path}" "${name}" why)
    if(why)
      string(APPEND faults "\n  ${path} includes ${name}: ${why}")
    endif()
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "Includes that break the rules of cmake/CheckIncludes.cmake:${faults}")
endif()
if(DEFINED STAMP)
  file(TOUCH ${STAMP})
endif()
