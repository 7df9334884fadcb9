#include "data/FileAccess.h"

#include <QFile>

#include <filesystem>
#include <system_error>

namespace data
{

namespace
{

/// Type of the file at the path of @p file, after following links; file_type::none if
/// it cannot be determined. The file is not opened, so a pipe cannot block the call.
/// The path is passed as bytes, because the conversion of a wide string throws if the
/// string is not valid text.
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
