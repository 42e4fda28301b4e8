#include "support/PhotosSqliteWriter.h"

#include <QFile>

#include <sqlite3.h>

#include <memory>

namespace
{
QString literal(QString text)
{
    return text.isNull() ? QStringLiteral("NULL")
                         : u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

void addMembers(QStringList& statements, const char* table, const char* columns,
                const std::vector<std::pair<int, int>>& members)
{
    if (members.empty())
        return;
    const QString name = QString::fromLatin1(table);
    statements.append(QStringLiteral("CREATE TABLE %1 (%2)").arg(name, QLatin1String(columns)));
    for (const auto& [album, asset] : members)
        statements.append(
            QStringLiteral("INSERT INTO %1 VALUES (%2, %3)").arg(name).arg(album).arg(asset));
}

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, Close>;

QString runOn(Database& database, const QString& path, const QStringList& statements)
{
    sqlite3* opened = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &opened);
    database.reset(opened);
    for (const QString& statement : statements) {
        if (sqlite3_exec(opened, statement.toUtf8().constData(), nullptr, nullptr, nullptr) !=
            SQLITE_OK)
            return statement + QStringLiteral(": ") + QString::fromUtf8(sqlite3_errmsg(opened));
    }
    return {};
}
} // namespace

QStringList PhotosSqliteWriter::statements(const TestPhoneLibrary& library)
{
    QStringList all = {
        QStringLiteral("BEGIN"),
        QStringLiteral("CREATE TABLE ZGENERICALBUM (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, "
                       "ZKIND INTEGER, ZTITLE VARCHAR)"),
        QStringLiteral("CREATE TABLE ZGENERICASSET (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, "
                       "ZTHUMBNAILINDEX INTEGER, ZDIRECTORY VARCHAR, ZFILENAME VARCHAR, "
                       "ZTITLE VARCHAR)"),
        QStringLiteral("CREATE TABLE Z_METADATA (Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR)")};
    for (const auto& [id, title] : library.albums)
        all.append(QStringLiteral("INSERT INTO ZGENERICALBUM VALUES (%1, 6, 2, %2)")
                       .arg(QString::number(id), literal(title)));
    for (const TestAsset& asset : library.assets)
        all.append(QStringLiteral("INSERT INTO ZGENERICASSET VALUES (%1, 11, %2, %3, %4, %5)")
                       .arg(QString::number(asset.id),
                            asset.thumbnailIndex ? QString::number(*asset.thumbnailIndex)
                                                 : QStringLiteral("NULL"),
                            literal(asset.directory), literal(asset.fileName),
                            literal(asset.title)));
    addMembers(all, "Z_6ASSETS", "Z_6ALBUMS INTEGER, Z_11ASSETS INTEGER", library.members6);
    addMembers(all, "Z_8ASSETS", "Z_8ALBUMS INTEGER, Z_14ASSETS INTEGER", library.members8);
    all.append(QStringLiteral("COMMIT"));
    return all;
}

QString PhotosSqliteWriter::run(const QString& path, const QStringList& statements)
{
    Database database;
    return runOn(database, path, statements);
}

QString PhotosSqliteWriter::write(const QString& path, const TestPhoneLibrary& library)
{
    return run(path, statements(library));
}

QString PhotosSqliteWriter::writeWithLog(const QString& path, const TestPhoneLibrary& library)
{
    // The last connection that closes takes the log away, so the files are copied before.
    const QString work = path + QStringLiteral(".work");
    Database database;
    const QString problem = runOn(database, work,
                                  QStringList{QStringLiteral("PRAGMA journal_mode=WAL"),
                                              QStringLiteral("PRAGMA wal_autocheckpoint=0")} +
                                      statements(library));
    if (!problem.isEmpty())
        return problem;
    for (const QLatin1String suffix :
         {QLatin1String(""), QLatin1String("-wal"), QLatin1String("-shm")}) {
        if (!QFile::copy(work + suffix, path + suffix))
            return work + suffix + QStringLiteral(": not copied");
    }
    database.reset();
    return QFile::remove(work) ? QString() : work + QStringLiteral(": not removed");
}
