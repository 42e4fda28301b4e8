#pragma once

#include "Export/ExportReport.h"
#include "Window/Crash/CrashWindow.h"
#include "Window/Dialogs/AboutWindow.h"
#include "Window/Dialogs/CopyRuleWindow.h"
#include "Window/Dialogs/ExportModeWindow.h"
#include "Window/Dialogs/PreferencesWindow.h"
#include "Window/Dialogs/ReportWindow.h"
#include "Window/FinishedExport.h"
#include "support/WindowFixture.h"

#include <QPointer>

#include <functional>

/// The window on a player, and each of the dialogs that it opens, for what holds for all of them.
class AllWindows : public WindowFixture
{
protected:
    using Check = std::function<void(QWidget& top)>;

    void SetUp() override
    {
        add("Love Song", "1");
        add("Road", "2").genre = "Rock";
        library.playlists.push_back({"Evening", {2, 1}});
        openOnPlayer();
    }

    void forEachDialog(const Check& check)
    {
        const auto ended = std::make_shared<FinishedExport>();
        ended->report = std::make_shared<ExportReport>();
        const std::function<QDialog*()> make[] = {
            [this] {
                auto* window = new PreferencesWindow(Config::instance(), true, &this->window());
                window->showPref();
                return window;
            },
            [this] {
                auto* window = new CopyRuleWindow(&this->window());
                window->ask("/home/ada/" + QString(600, u'x') + ".mp3", KeepBothRule,
                            [](const auto&) {});
                return window;
            },
            [this] {
                auto* window = new ExportModeWindow(false, &this->window());
                window->askForHandOver([](const auto&) {});
                return window;
            },
            [this] {
                auto* window = new AboutWindow(&this->window());
                window->showAbout();
                return window;
            },
            [&] {
                auto* window = new ReportWindow(ended, &this->window());
                window->show();
                return window;
            },
            [] {
                CrashWindow::show("a report");
                return qobject_cast<QDialog*>(QApplication::activeModalWidget());
            },
        };
        for (const auto& one : make) {
            const QPointer<QDialog> dialog = one();
            ASSERT_TRUE(dialog);
            ASSERT_TRUE(waitUntil([&] { return dialog->isActiveWindow(); }));
            SCOPED_TRACE(dialog->objectName().toStdString());
            check(*dialog);
            dialog->close();
            ASSERT_TRUE(waitUntil([&] { return !dialog; }));
        }
    }
};
