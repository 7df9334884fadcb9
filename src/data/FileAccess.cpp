#include "data/FileAccess.h"

#include <QFile>

#include <filesystem>
#include <system_error>

namespace data
{

namespace
{

/// What stands behind the name of @p file, links followed; none when it cannot
/// be looked at. Nothing is opened for it, so nothing waits. The name goes as
/// bytes: a wide name that is no valid text would throw.
std::filesystem::file_type typeOf(const QFile& file)
{
    std::error_code error;
    return std::filesystem::status(QFile::encodeName(file.fileName()).toStdString(), error).type();
}

} // namespace

bool openForReading(QFile& file)
{
    return typeOf(file) == std::filesystem::file_type::regular && file.open(QIODevice::ReadOnly);
}

bool openForWriting(QFile& file, QIODevice::OpenMode extra)
{
    return typeOf(file) != std::filesystem::file_type::fifo && !file.fileName().isEmpty() &&
           file.open(QIODevice::WriteOnly | extra);
}

} // namespace data
