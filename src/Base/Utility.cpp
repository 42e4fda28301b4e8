#include "Base/Utility.h"

#include "Base/Exception.h"
#include "Base/FolderRemoval.h"
#include "Base/PathName.h"
#include "Base/Program.h"
#include "Base/Utf8.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTimeZone>
#include <QUuid>

#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <filesystem>
#include <system_error>

QString Utility::stringWithStmt(sqlite3_stmt* statement, int index)
{
    // The text first: asking for it may convert the column and so change its length.
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
    if (!text)
        return QLatin1String("");
    return Utf8::text({text, sqlite3_column_bytes(statement, index)});
}

QDateTime Utility::dateWithStmt(sqlite3_stmt* statement, int index)
{
    const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    const double seconds = sqlite3_column_double(statement, index);
    // Beyond some 30,000 years the column is rubbish, and a cast of it would be undefined.
    constexpr double MostSeconds = 1e12;
    if (!(std::abs(seconds) < MostSeconds))
        return reference;
    return reference.addMSecs(std::llround(seconds * 1000.0));
}

QString Utility::intervalToString(double seconds)
{
    // Durations come from devices; what no clock could show reads as zero.
    constexpr double MostSeconds = 1e12;
    if (!(std::abs(seconds) < MostSeconds))
        seconds = 0;
    const auto hours = static_cast<qint64>(std::floor(seconds / 3600.0));
    const double rest = seconds - static_cast<double>(hours) * 3600.0;
    const auto minutes = static_cast<qint64>(std::floor(rest / 60.0));
    const auto left = static_cast<qint64>(std::ceil(rest - static_cast<double>(minutes) * 60.0));
    const auto twoDigits = [](qint64 n) {
        return QString::asprintf("%02lld", static_cast<long long>(n));
    };
    const QString shortForm = twoDigits(minutes) + u':' + twoDigits(left);
    return hours <= 0 ? shortForm : twoDigits(hours) + u':' + shortForm;
}

QString Utility::getTempFilePath(const QString& path)
{
    const QString name = QDir::tempPath() + u'/' + PathName::lastComponent(path);
    QByteArray pattern = QFile::encodeName(name);
    if (!pattern.endsWith("XXXXXX"))
        return name;
    const int descriptor = mkstemp(pattern.data());
    if (descriptor >= 0)
        close(descriptor);
    return QFile::decodeName(pattern);
}

QString Utility::applicationSupportFolder()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString folder = PathName::join(base, Program::briefName());
    createFolder(folder);
    return folder;
}

QString Utility::logFolder()
{
    const QString folder = PathName::join(applicationSupportFolder(), u"log");
    createFolder(folder);
    return folder;
}

void Utility::clearLog()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    // Whoever put a link there, it is not for the program to empty what it leads to.
    (void)FolderRemoval::removeOwn(base, {Program::briefName(), QStringLiteral("log")});
}

QString Utility::createFolder(const QString& path)
{
    if (path.contains(QChar::Null)) // the system would end the name there
        return QString::fromStdString(std::generic_category().message(EINVAL));
    std::error_code error;
    const std::filesystem::path nativePath(QFile::encodeName(path).toStdString());
    std::filesystem::create_directories(nativePath, error);
    return error ? QString::fromStdString(error.message()) : QString();
}

QString Utility::stringWithUUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

void Utility::throwRangeException(std::size_t size, std::size_t offset, std::size_t length)
{
    throw Exception(QStringLiteral("NSRangeException"), QStringLiteral("%1 bytes at %2 of %3")
                                                            .arg(quint64(length))
                                                            .arg(quint64(offset))
                                                            .arg(quint64(size)));
}
