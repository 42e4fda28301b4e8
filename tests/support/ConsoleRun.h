#pragma once

#include "support/Files.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

/// One run of the real console program, to its end.
struct ConsoleRun {
    explicit ConsoleRun(const QStringList& arguments)
    {
        QProcess process;
        process.start(program(), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        exitCode = process.exitCode();
        output = process.readAllStandardOutput();
        errors = QString::fromUtf8(process.readAllStandardError());
    }

    static QString program()
    {
        return QStringLiteral(ZELL_PROGRAMS) + QStringLiteral("/zell-transfer-cli");
    }

    [[nodiscard]] QString text() const { return QString::fromUtf8(output); }
    [[nodiscard]] QJsonObject json() const
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(output, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
        return document.object();
    }

    int exitCode = -1;
    QByteArray output;
    QString errors;
};

/// The lines of a report, each an object.
inline std::vector<QJsonObject> readReport(const QString& path)
{
    std::vector<QJsonObject> items;
    for (const QByteArray& line : Files::read(path).split('\n')) {
        if (!line.isEmpty())
            items.push_back(QJsonDocument::fromJson(line).object());
    }
    return items;
}
