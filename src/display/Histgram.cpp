#include "display/Histgram.h"

#include "data/FileAccess.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>

Histgram::Histgram(QLineEdit* from, QLineEdit* to, QLineEdit* boxCount, QAbstractButton* automatic,
                   QObject* parent)
    : QObject(parent)
    , fromEdit(from)
    , toEdit(to)
    , boxesEdit(boxCount)
    , autoBox(automatic)
{
}

void Histgram::init()
{
    autoMode = autoBox->isChecked();
    start(fromEdit->text().toDouble(), toEdit->text().toDouble(),
          boxesFrom(boxesEdit->text().toDouble()));
}

bool Histgram::write(const QString& path, const QString& name, QString* incomplete) const
{
    const QFileInfo result(path);
    const QString fileName =
        result.completeBaseName() + QLatin1Char('_') + name + QLatin1Char('.') + result.suffix();
    // canonicalFilePath() of a missing file is empty, and opening an empty path fails. This
    // is intended: users opt in to a histogram file by creating it once.
    const QString target = QFileInfo(QDir(result.canonicalPath()), fileName).canonicalFilePath();
    QFile file(target);
    if (!data::openForWriting(file)) {
        return false;
    }
    const QByteArray text = fileText();
    const bool isWritten = file.write(text) == text.size();
    file.close();
    if ((!isWritten || file.error() != QFileDevice::NoError) && incomplete != nullptr) {
        *incomplete = target;
    }
    return true;
}
