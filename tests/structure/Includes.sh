#!/usr/bin/env bash
# Includes.sh CMAKE SOURCE WORK CASE: tests one behaviour of cmake/CheckIncludes.cmake with
# the program CMAKE. SOURCE is the folder of the project. The case "src_passes" checks its
# src folder; each other case checks a small source tree that it creates in the folder WORK.
set -euo pipefail
cmake=$1 source=$2 work=$3 case=$4

rm -rf "$work"
mkdir -p "$work"
fail()
{
    echo "$case: $*"
    exit 1
}

# file PATH LINE...: writes a source file into the tree.
file()
{
    mkdir -p "$(dirname "$work/$1")"
    printf '%s\n' "${@:2}" >"$work/$1"
}
check()
{
    said=$("$cmake" "-DTREE=${1:-$work}" -P "$source/cmake/CheckIncludes.cmake" 2>&1)
}
accepts()
{
    check || fail "refused: $said"
}
# refuses WORD...: the check must fail, and its output must contain each WORD.
refuses()
{
    check && fail "accepted"
    for word; do
        [[ $said == *"$word"* ]] || fail "no \"$word\" in: $said"
    done
}

case $case in
src_passes)
    check "$source/src" || fail "refused: $said"
    ;;
each_folder_may_include_lower_folders)
    folders=(app panel rows display analysis data)
    for from in "${!folders[@]}"; do
        lines=('#pragma once' '#include <QString>' '#include <vector>')
        for to in "${folders[@]:from}"; do
            lines+=("#include \"$to/Some.h\"")
        done
        file "${folders[from]}/Some.h" "${lines[@]}"
    done
    accepts
    ;;
data_may_not_include_analysis)
    file data/Map.h '#include "analysis/Limits.h"'
    refuses data/Map.h analysis/Limits.h
    ;;
analysis_may_not_include_display)
    file analysis/Sums.cpp '#include "display/Graph.h"'
    refuses analysis/Sums.cpp display/Graph.h
    ;;
display_may_not_include_rows)
    file display/Graph.cpp '#include "rows/AEPoint.h"'
    refuses display/Graph.cpp rows/AEPoint.h
    ;;
rows_may_not_include_panel)
    file rows/AEPoint.h '#include "panel/FourPs.h"'
    refuses rows/AEPoint.h panel/FourPs.h
    ;;
panel_may_not_include_app)
    file panel/FourPs.cpp '#include "app/Body.h"'
    refuses panel/FourPs.cpp app/Body.h
    ;;
core_may_not_include_a_widget_header)
    for folder in data analysis; do
        for header in QWidget QLineEdit QTreeView QtWidgets/QFrame; do
            file "$folder/Some.cpp" "#include <$header>"
            refuses "$folder/Some.cpp" "$header"
        done
        rm "$work/$folder/Some.cpp"
    done
    ;;
core_may_not_include_a_header_of_qt_gui)
    for header in QColor QTransform QtGui QtGui/QPen; do
        file data/Some.h "#include <$header>"
        refuses data/Some.h "$header"
    done
    ;;
core_may_not_include_a_form)
    file rows/Row.h
    for header in ui_Some.h ui_Row.h; do
        file data/Some.h "#include \"$header\""
        refuses data/Some.h "$header"
    done
    ;;
panel_members_may_include_what_the_panel_may_include)
    lines=('#include "panel/FourPs.h"' '#include "rows/AEPoint.h"' '#include "display/Displays.h"'
        '#include "analysis/Limits.h"' '#include "data/AMutE.h"' '#include <QMessageBox>')
    file analysis/FourPsMap.cpp "${lines[@]}"
    file display/FourPsGraphs.cpp "${lines[@]}"
    accepts
    ;;
panel_members_may_not_include_app)
    file display/FourPsGraphs.cpp '#include "app/Body.h"'
    refuses display/FourPsGraphs.cpp app/Body.h
    ;;
only_files_named_FourPs_are_panel_members)
    for path in analysis/FourPsMap.h analysis/NotFourPs.cpp data/FourPsFiles.cpp; do
        file "$path" '#include "panel/FourPs.h"'
        refuses "$path" panel/FourPs.h
        rm "$work/$path"
    done
    ;;
a_form_may_only_be_included_in_its_class_folder)
    file display/Frame.h '#include "ui_Frame.h"'
    file forms/Frame.ui '<header>display/Surface.h</header>'
    accepts
    file rows/Row.cpp '#include "ui_Frame.h"'
    refuses rows/Row.cpp ui_Frame.h
    ;;
a_form_may_not_name_a_header_from_a_higher_folder)
    file display/Frame.h '#include "ui_Frame.h"'
    file forms/Frame.ui '   <header>display/Surface.h</header>' '   <header>rows/AEPoint.h</header>'
    refuses forms/Frame.ui rows/AEPoint.h
    ;;
a_folder_without_a_rule_is_refused)
    file network/Socket.cpp '#include <QString>'
    refuses network/Socket.cpp
    rm -r "$work/network"
    file Loose.h '#pragma once'
    refuses Loose.h
    rm "$work/Loose.h"
    file rows/Row.cpp '#include "network/Socket.h"'
    refuses rows/Row.cpp network/Socket.h
    ;;
a_path_other_than_folder_and_name_is_refused)
    for name in '"../rows/AEPoint.h"' '"AEPoint.h"' '"data/../rows/AEPoint.h"' '<rows/AEPoint.h>' \
        '"data/deep/Map.h"' '"data/Map.inc"' '<private/qobject_p.h>' 'HEADER'; do
        file display/Graph.cpp "#include $name"
        refuses display/Graph.cpp
    done
    ;;
a_path_after_a_comment_is_checked)
    file data/Map.h '/* rows */ #include "rows/Row.h"'
    refuses data/Map.h rows/Row.h
    file data/Map.h '/* of rows' 'and more */#include "rows/Row.h"'
    refuses data/Map.h rows/Row.h
    ;;
a_path_after_a_byte_order_mark_is_checked)
    file data/Map.h $'\xEF\xBB\xBF#include "rows/Row.h"'
    refuses data/Map.h rows/Row.h
    file data/Map.h $'// Maps\r\f#include "rows/Row.h"'
    refuses data/Map.h rows/Row.h
    ;;
a_path_split_over_two_lines_is_checked)
    file data/Map.h $'#inc\\' 'lude "rows/Row.h"'
    refuses data/Map.h rows/Row.h
    ;;
a_source_with_an_unknown_suffix_is_refused)
    file data/Map.ipp '#include "rows/Row.h"'
    refuses data/Map.ipp
    ;;
a_forbidden_include_after_others_is_found)
    file data/Map.cpp '#include "data/Map.h" // [[nodiscard]; see' '' '#if 1' '#  include "data/A.h"' \
        '#include<vector> // [' $'\t#\tinclude \\' '"rows/AEPoint.h" // ]'
    refuses data/Map.cpp rows/AEPoint.h
    ;;
all_forbidden_includes_are_reported_together)
    file data/Map.h '#include "analysis/Limits.h"'
    file display/Graph.cpp '#include "rows/AEPoint.h"'
    refuses data/Map.h analysis/Limits.h display/Graph.cpp rows/AEPoint.h
    ;;
*)
    fail "unknown case"
    ;;
esac
