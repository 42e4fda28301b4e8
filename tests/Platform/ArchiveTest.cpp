#include "Platform/Archive.h"

#include "support/Files.h"

#include <QProcess>
#include <QtEndian>

#include <gtest/gtest.h>
#include <zip.h>

#include <map>

namespace
{
class ArchiveTest : public testing::Test
{
protected:
    QString path(const char* name) const { return _folder.filePath(QString::fromUtf8(name)); }

    void makeBook()
    {
        Files::write(path("Book.epub/mimetype"), "application/epub+zip");
        Files::write(path("Book.epub/META-INF/container.xml"),
                     R"(<?xml version="1.0"?>
<container version="1.0" xmlns="urn:oasis:names:tc:opendocument:xmlns:container">
<rootfiles><rootfile full-path="OEBPS/content.opf"
media-type="application/oebps-package+xml"/></rootfiles></container>)");
        Files::write(path("Book.epub/OEBPS/content.opf"), R"(<?xml version="1.0" encoding="UTF-8"?>
<package xmlns="http://www.idpf.org/2007/opf" version="3.0" unique-identifier="id">
<metadata xmlns:dc="http://purl.org/dc/elements/1.1/">
<dc:identifier id="id">urn:uuid:1f0e1c1e-7b0a-4d0e-9a53-0d5b7f4b2c11</dc:identifier>
<dc:title>Field Notes</dc:title><dc:language>en</dc:language>
<meta property="dcterms:modified">2020-01-01T00:00:00Z</meta></metadata>
<manifest><item id="nav" href="nav.xhtml" media-type="application/xhtml+xml" properties="nav"/>
<item id="one" href="one.xhtml" media-type="application/xhtml+xml"/></manifest>
<spine><itemref idref="one"/></spine></package>)");
        Files::write(path("Book.epub/OEBPS/nav.xhtml"), R"(<?xml version="1.0" encoding="UTF-8"?>
<html xmlns="http://www.w3.org/1999/xhtml" xmlns:epub="http://www.idpf.org/2007/ops">
<head><title>Contents</title></head><body><nav epub:type="toc"><ol>
<li><a href="one.xhtml">One</a></li></ol></nav></body></html>)");
        Files::write(path("Book.epub/OEBPS/one.xhtml"), R"(<?xml version="1.0" encoding="UTF-8"?>
<html xmlns="http://www.w3.org/1999/xhtml"><head><title>One</title></head>
<body><p>Rain again.</p></body></html>)");
    }

    /// Names and contents, read back by the library itself.
    static std::map<QString, QByteArray> members(const QString& archive)
    {
        std::map<QString, QByteArray> found;
        zip_t* zip = zip_open(QFile::encodeName(archive).constData(), ZIP_RDONLY, nullptr);
        EXPECT_NE(zip, nullptr);
        for (zip_int64_t i = 0; zip && i < zip_get_num_entries(zip, 0); ++i) {
            zip_stat_t status;
            zip_stat_index(zip, zip_uint64_t(i), 0, &status);
            QByteArray content(qsizetype(status.size), '\0');
            zip_file_t* file = zip_fopen_index(zip, zip_uint64_t(i), 0);
            EXPECT_EQ(zip_fread(file, content.data(), status.size), zip_int64_t(status.size));
            zip_fclose(file);
            found[QString::fromUtf8(status.name)] = content;
        }
        zip_discard(zip);
        return found;
    }

    QTemporaryDir _folder;
};
} // namespace

TEST_F(ArchiveTest, MakesAnUnpackedBookAValidOneAgain)
{
    makeBook();
    ASSERT_TRUE(Archive::pack(path("Book.epub"), path("Packed.epub")));
    QProcess checker;
    checker.setProcessChannelMode(QProcess::MergedChannels);
    checker.start("java", {"-jar", "/usr/share/java/epubcheck.jar", path("Packed.epub")});
    ASSERT_TRUE(checker.waitForFinished(120000)) << checker.errorString().toStdString();
    EXPECT_EQ(checker.exitCode(), 0) << checker.readAll().toStdString();
}

TEST_F(ArchiveTest, PutsTheFileTypeFirstStoredAndWithoutExtraFields)
{
    makeBook();
    Files::write(path("Book.epub/AAA"), "comes before it by name");
    ASSERT_TRUE(Archive::pack(path("Book.epub"), path("Packed.epub")));
    const QByteArray bytes = Files::read(path("Packed.epub"));
    // The local file header: byte 8 method, byte 26 name length, byte 28 extra length.
    EXPECT_EQ(bytes.first(4), QByteArray("PK\3\4"));
    EXPECT_EQ(qFromLittleEndian<quint16>(bytes.constData() + 8), 0);
    EXPECT_EQ(qFromLittleEndian<quint16>(bytes.constData() + 26), 8);
    EXPECT_EQ(qFromLittleEndian<quint16>(bytes.constData() + 28), 0);
    EXPECT_EQ(bytes.sliced(30, 28), QByteArray("mimetypeapplication/epub+zip"));
}

TEST_F(ArchiveTest, NamesMembersRelativeToTheFolder)
{
    Files::write(path("Book/a.txt"), "A");
    Files::write(path("Book/deep/deeper/b.txt"), QByteArray(100000, 'b'));
    Files::write(path("Book/глава/一.txt"), "one");
    Files::write(path("Book/.hidden"), "h");
    ASSERT_TRUE(QDir().mkpath(path("Book/empty")));
    Files::write(path("Book/sub/mimetype"), "not at the top");
    ASSERT_TRUE(Archive::pack(path("Book"), path("Book.zip")));
    const std::map<QString, QByteArray> expected = {{".hidden", "h"},
                                                    {"a.txt", "A"},
                                                    {"deep/", ""},
                                                    {"deep/deeper/", ""},
                                                    {"deep/deeper/b.txt", QByteArray(100000, 'b')},
                                                    {"empty/", ""},
                                                    {"sub/", ""},
                                                    {"sub/mimetype", "not at the top"},
                                                    {QString::fromUtf8("глава/"), ""},
                                                    {QString::fromUtf8("глава/一.txt"), "one"}};
    EXPECT_EQ(members(path("Book.zip")), expected);
}

TEST_F(ArchiveTest, LeavesLinksOut)
{
    Files::write(path("secret"), "not part of the book");
    Files::write(path("Book/a.txt"), "A");
    ASSERT_TRUE(QFile::link(path("secret"), path("Book/link")));
    ASSERT_TRUE(QFile::link(path("."), path("Book/loop")));
    ASSERT_TRUE(Archive::pack(path("Book"), path("Book.zip")));
    EXPECT_EQ(members(path("Book.zip")), (std::map<QString, QByteArray>{{"a.txt", "A"}}));
}

TEST_F(ArchiveTest, NeverWritesOverAnExistingFile)
{
    Files::write(path("Book/a.txt"), "A");
    Files::write(path("Book.zip"), "somebody's");
    EXPECT_FALSE(Archive::pack(path("Book"), path("Book.zip")));
    EXPECT_EQ(Files::read(path("Book.zip")), "somebody's");
}

TEST_F(ArchiveTest, SaysWhyItCannotWriteAndLeavesNothing)
{
    Files::write(path("Book/a.txt"), "A");
    EXPECT_FALSE(Archive::pack(path("Book"), path("nowhere/Book.zip")));
    EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
}

TEST_F(ArchiveTest, RefusesAnEmptyFolder)
{
    ASSERT_TRUE(QDir().mkpath(path("Book")));
    EXPECT_FALSE(Archive::pack(path("Book"), path("Book.zip")));
    EXPECT_FALSE(QFileInfo::exists(path("Book.zip")));
}
