#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Small file helpers that tests share. A failure fails the test that called.
namespace Files
{
inline void write(const QString& path, const QByteArray& content)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(content), content.size());
}

inline QByteArray read(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

/// `size` bytes that are not all alike.
inline QByteArray content(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = char((i * 31 + i / 251) & 0xff);
    return bytes;
}
} // namespace Files

/// So that a failed comparison shows texts.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << (text.isNull() ? std::string("(null)") : '"' + text.toStdString() + '"');
}
