#include "support/Files.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace
{
/// A run of the program that makes the help document, and what it leaves.
class HelpTest : public testing::Test
{
protected:
    int make(const QString& text)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        // What sanitizers find inside Qt is not what is tested here.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ZELL_PROGRAMS "/make-help"),
                      {text, QStringLiteral(ZELL_RESOURCES "/brand/zell_logo.svg"), document()});
        EXPECT_TRUE(process.waitForFinished(60000));
        said = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }
    [[nodiscard]] QString document() const { return _folder.filePath(QStringLiteral("help.pdf")); }

    QString said;

private:
    QTemporaryDir _folder;
};

const QString Text = QStringLiteral(ZELL_RESOURCES "/../docs/help.md");
} // namespace

TEST_F(HelpTest, IsADocumentOfSeveralPages)
{
    ASSERT_EQ(make(Text), 0) << said.toStdString();
    const QByteArray bytes = Files::read(document());
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_GE(bytes.count("/Type /Page\n"), 6);
}

TEST_F(HelpTest, ShowsPicturesThatAreThere)
{
    const QString text = QString::fromUtf8(Files::read(Text));
    qsizetype pictures = 0;
    for (qsizetype at = text.indexOf("]("); at >= 0; at = text.indexOf("](", at + 1)) {
        const QString path = text.mid(at + 2, text.indexOf(')', at) - at - 2);
        EXPECT_TRUE(QFile::exists(QFileInfo(Text).path() + '/' + path)) << path.toStdString();
        ++pictures;
    }
    EXPECT_EQ(pictures, 11); // one for each row of the source list
}

TEST_F(HelpTest, IsNotMadeWithoutItsText)
{
    EXPECT_EQ(make(QStringLiteral("no such text.md")), 1);
    EXPECT_TRUE(said.contains("cannot be read")) << said.toStdString();
    EXPECT_FALSE(QFile::exists(document()));
}
