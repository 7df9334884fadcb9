#include "data/FileAccess.h"

#include <QFile>
#include <QFileInfo>

namespace data
{

bool openForReading(QFile& file)
{
    return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
}

} // namespace data
