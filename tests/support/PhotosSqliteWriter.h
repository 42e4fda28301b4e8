#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

/// A row of the table of pictures.
struct TestAsset {
    int id = 0;
    std::optional<int> thumbnailIndex = 0; ///< none is NULL
    QString directory;                     ///< "DCIM/100APPLE"; null is NULL
    QString fileName;
    QString title;
};

/// A phone's photo library to be written.
struct TestPhoneLibrary {
    std::vector<std::pair<int, QString>> albums; ///< id and title; a null title is NULL
    std::vector<TestAsset> assets;
    /// Album id and picture id, in the two tables that phones of different age have.
    std::vector<std::pair<int, int>> members6;
    std::vector<std::pair<int, int>> members8;
};

/// Writes "Photos.sqlite" as phones have it.
namespace PhotosSqliteWriter
{
/// The statements that make the library. Tables of members are made only where there are any.
QStringList statements(const TestPhoneLibrary& library);

/// Runs statements on a new database; empty, or what went wrong.
QString run(const QString& path, const QStringList& statements);

/// Writes the library; empty, or what went wrong.
QString write(const QString& path, const TestPhoneLibrary& library);

/// The same, with the rows still in a write-ahead log beside the database, as a phone in use has
/// it.
QString writeWithLog(const QString& path, const TestPhoneLibrary& library);
} // namespace PhotosSqliteWriter
