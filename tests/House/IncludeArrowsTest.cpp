#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace
{
/// Whom a folder of the sources may include besides itself: the arrows of the architecture.
const QMap<QString, QStringList>& arrows()
{
    static const QMap<QString, QStringList> all = {
        {"Base", {}},
        {"Platform", {"Base"}},
        {"Device", {"Base", "Platform"}},
        {"Export", {"Base", "Platform", "Device"}},
        {"Console", {"Base", "Platform", "Device", "Export"}},
        {"Window", {"Base", "Platform", "Device", "Export"}},
    };
    return all;
}

/// Families of devices and formats of libraries: they know the base of their folder, and only the
/// register knows them. The other folders below `Device` are tools.
const QStringList Children = {"Device/iPod/", "Device/iPhone/", "Device/itdb/", "Device/sql/"};

/// What stands beside them and is a tool.
const QSet<QString> Tools = {"Device/sql/Database.h"};

struct Include {
    QString from; ///< a file of ours, as others would include it
    QString what; ///< as it stands between the quotes or brackets
    bool ours = false;
};

std::vector<Include> allIncludes()
{
    static const QRegularExpression line(R"(^#include (["<])([^">]+)[">])",
                                         QRegularExpression::MultilineOption);
    const QDir sources(QStringLiteral(ZELL_SOURCES));
    std::vector<Include> found;
    QDirIterator files(sources.path(), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        auto matches = line.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            found.push_back({sources.relativeFilePath(file.fileName()), match.captured(2),
                             match.captured(1) == u'"'});
        }
    }
    return found;
}

QString folderOf(const QString& path)
{
    return path.section(u'/', 0, 0);
}

std::string words(const Include& include)
{
    return (include.from + " -> " + include.what).toStdString();
}
} // namespace

TEST(IncludeArrowsTest, EachFolderIncludesOnlyWhatAnArrowPointsAt)
{
    const std::vector<Include> includes = allIncludes();
    ASSERT_GT(includes.size(), 500U);
    for (const Include& include : includes) {
        const QString from = folderOf(include.from);
        ASSERT_TRUE(arrows().contains(from)) << from.toStdString() << " has no arrows";
        if (include.ours) {
            const QString to = folderOf(include.what);
            EXPECT_TRUE(to == from || arrows()[from].contains(to)) << words(include);
        }
    }
}

TEST(IncludeArrowsTest, NothingBelowTheWindowKnowsAWidget)
{
    static const QRegularExpression widget(
        "^(QtWidgets|QWidget|QDialog|QMainWindow|QApplication|Q\\w*"
        "(ItemView|TreeView|ListView|TableView|Layout|Button|"
        "Box|Edit|Menu|Delegate)$)");
    for (const Include& include : allIncludes()) {
        if (folderOf(include.from) != "Window") {
            EXPECT_FALSE(!include.ours && widget.match(include.what).hasMatch()) << words(include);
        }
    }
}

TEST(IncludeArrowsTest, TheBaseOfDevicesDoesNotKnowItsChildren)
{
    for (const Include& include : allIncludes()) {
        const bool isBase = include.from.startsWith("Device/") && include.from.count(u'/') == 1;
        const bool isChild =
            std::any_of(Children.begin(), Children.end(),
                        [&](const QString& child) { return include.what.startsWith(child); });
        if (isBase && isChild && !Tools.contains(include.what))
            ADD_FAILURE() << words(include);
    }
}

TEST(IncludeArrowsTest, TheHeadersOfThePlatformShowNoMessageBus)
{
    for (const Include& include : allIncludes()) {
        if (folderOf(include.from) == "Platform" && include.from.endsWith(".h")) {
            EXPECT_FALSE(include.what.startsWith("QDBus") || include.what.startsWith("QtDBus"))
                << words(include);
        }
    }
}
