#pragma once

#include "Export/Config.h"
#include "Export/ExportReport.h"
#include "support/Files.h"
#include "support/ScriptedHost.h"

#include <gtest/gtest.h>

/// What every export job needs: destinations below `out`, which name what clashes, a host that
/// answers as it is told, and a report.
class ExportFixture : public testing::Test
{
protected:
    ExportFixture()
    {
        for (int i = 0; i < int(Sections::Count); ++i)
            config.setFolderPath(Section(i), out(Sections::folderName(Section(i))));
        config.setCopyRule(KeepBothRule);
    }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    [[nodiscard]] QString out(const QString& name) const { return path("out/" + name); }

    [[nodiscard]] const ExportItem& item(std::size_t i) const { return report.items().at(i); }
    [[nodiscard]] QStringList results() const
    {
        QStringList names;
        for (const ExportItem& one : report.items())
            names.append(ExportItem::resultName(one.result));
        return names;
    }

    Config config;
    ScriptedHost host;
    ExportReport report;

private:
    QTemporaryDir _folder;
};
