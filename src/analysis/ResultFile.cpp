#include "analysis/ResultFile.h"

#include "data/FileAccess.h"

#include <QFile>

namespace analysis
{

bool writeResultFile(const QString& path, const A2DData& map, const ValenceMix& mix,
                     const std::array<bool, columnCount>& wanted)
{
    QFile file(path);
    const bool written = data::openForWriting(file) && writeResultMap(file, map, mix, wanted);
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

} // namespace analysis
