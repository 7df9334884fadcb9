# Called by aelk_keep_free_of_widgets: fails on an include of the widget side.
foreach(source IN LISTS SOURCES)
  file(STRINGS ${source} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if(line MATCHES "QtWidgets|QtGui|[<\"/](QWidget|QFrame|QDialog|QLineEdit|QAbstractButton|QApplication|QGuiApplication|QPainter|QColor|QFont|QPixmap|QImage)[>\"]"
       OR line MATCHES "\"(rows|panel|display|forms|app)/|\"ui_")
      message(FATAL_ERROR "${source}: the core knows no widgets, but has: ${line}")
    endif()
  endforeach()
endforeach()
file(TOUCH ${STAMP})
