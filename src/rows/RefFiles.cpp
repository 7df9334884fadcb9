#include "rows/RefFiles.h"

RefFiles::RefFiles(QObject* parent)
    : QObject(parent)
{
}
