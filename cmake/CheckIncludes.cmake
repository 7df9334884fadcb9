# Fails on an include in a tree of sources that breaks the rules below.
# cmake -DTREE=src [-DSTAMP=file to touch] -P CheckIncludes.cmake
cmake_minimum_required(VERSION 3.25)

# Knowledge goes one way: the folders whose headers a folder may include, besides
# its own. A folder without a line here may hold no code.
set(app_may_include panel rows display analysis data)
set(panel_may_include rows display analysis data)
set(rows_may_include display analysis data)
set(display_may_include analysis data)
set(analysis_may_include data)
set(data_may_include "")

# Members of the panel that lie with what they do: they know what the panel knows.
set(panel_members "^(analysis|display)/FourPs[A-Za-z]*\\.cpp$")

# What the folders of the core take from Qt. A further header of Qt Core is added
# here; those of Qt Gui and Qt Widgets are not for the core.
set(core analysis data)
set(core_qt_headers
  QArrayDataPointer QByteArray QByteArrayView QChar QDebug QFile QFileDevice QFileInfo
  QIODevice QList QObject QPointF QRect QRectF QString QStringDecoder QStringEncoder
  QStringList QStringView QTextStream QtEndian QtGlobal QtMath)

# The folder of a source. A form, and the header that is generated from it, belong to
# the folder that has the class.
function(folder_of path result)
  if(path MATCHES "^(forms/|ui_)([A-Za-z0-9_]+)\\.(ui|h)$")
    file(GLOB path RELATIVE ${TREE} "${TREE}/*/${CMAKE_MATCH_2}.h")
  endif()
  string(REGEX MATCH "^[^/;]+/" folder "${path}")
  string(REPLACE "/" "" folder "${folder}")
  set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# What a source or a form includes, without its quotes or brackets.
function(includes_of path result)
  file(READ ${TREE}/${path} text)
  # What may stand before a # or within a word, as the compiler reads it.
  string(ASCII 239 187 191 byte_order_mark)
  string(ASCII 11 vertical_tab)
  string(ASCII 12 form_feed)
  string(REGEX REPLACE "${byte_order_mark}|\\\\\r?\n" "" text "\n${text}")
  string(REGEX REPLACE "${vertical_tab}|${form_feed}" " " text "${text}")
  string(REPLACE "\r" "\n" text "${text}")
  # Otherwise these would join or split the elements of a list.
  string(REGEX REPLACE ";|\\[|\\]" " " text "${text}")
  if(path MATCHES "\\.ui$")
    set(include "<(header|include)( [^>]*)?>([^<]*)<")
  else()
    # The first group is the end of a comment before it.
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

# Why the source may not include the name; empty where it may.
function(refusal path name result)
  set(${result} "" PARENT_SCOPE)
  folder_of("${path}" from)
  if(path MATCHES "${panel_members}")
    set(from panel)
  endif()
  if(name MATCHES "^[a-z0-9_]+$" OR name MATCHES "^[a-z]+intrin\\.h$")
    return() # the language's own
  endif()
  if(name MATCHES "^Q[A-Za-z0-9]+$")
    if(from IN_LIST core AND NOT name IN_LIST core_qt_headers)
      set(${result} "the core includes no such header of Qt" PARENT_SCOPE)
    endif()
    return()
  endif()
  if(NOT name MATCHES "^([a-z]+/|ui_)[A-Za-z0-9]+\\.h$")
    set(${result} "an include is a header of the language, of Qt, folder/Name.h or ui_Name.h"
        PARENT_SCOPE)
    return()
  endif()
  folder_of("${name}" to)
  set(allowed ${from} ${${from}_may_include})
  if(name MATCHES "^ui_")
    set(allowed ${from}) # a form is its own class's business
    list(REMOVE_ITEM allowed ${core})
  endif()
  if(NOT to IN_LIST allowed)
    if(NOT allowed)
      set(allowed "none")
    endif()
    list(JOIN allowed ", " allowed)
    set(${result} "from ${to}; allowed: ${allowed}" PARENT_SCOPE)
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
    string(APPEND faults "\n  ${path}: its folder has no rule")
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
  message(FATAL_ERROR "Includes against the rules of cmake/CheckIncludes.cmake:${faults}")
endif()
if(DEFINED STAMP)
  file(TOUCH ${STAMP})
endif()
