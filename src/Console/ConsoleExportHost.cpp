#include "Console/ConsoleExportHost.h"

#include "Base/PathName.h"
#include "Console/Interrupt.h"
#include "Console/Terminal.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace
{
constexpr int BarWidth = 24;
constexpr int TextWidth = 46;
constexpr qint64 MillisecondsBetweenDrawings = 50;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ConsoleExportHost)
};

QString itemName(const ExportItem& item)
{
    if (!item.title.isEmpty())
        return item.title;
    // One file on the device may hold the pictures of many photos.
    return item.kind == ExportItem::Kind::Photo && !item.to.isEmpty()
               ? PathName::lastComponent(item.to)
               : item.from;
}

QString itemLine(const ExportItem& item)
{
    const QString line =
        QStringLiteral("%1: %2").arg(ExportItem::resultName(item.result), itemName(item));
    return item.why.isEmpty() ? line : line + QStringLiteral(" (%1)").arg(item.why);
}

/// A rule for a typed answer: its first letter, a capital one for all that follow.
std::optional<int> ruleOf(const QString& letter)
{
    if (letter == u"n")
        return KeepBothRule;
    if (letter == u"o")
        return OverwriteRule;
    if (letter == u"s")
        return SkipRule;
    return std::nullopt;
}
} // namespace

ConsoleExportHost::ConsoleExportHost(bool quiet)
    : _style(quiet                       ? Style::Quiet
             : Terminal::showsProgress() ? Style::Bar
                                         : Style::Lines)
{
}

void ConsoleExportHost::showBegin(int count)
{
    _count = count;
    _done = 0;
}

void ConsoleExportHost::showProgress(const QString& text, double progress)
{
    _text = text;
    drawBar(progress);
}

bool ConsoleExportHost::exported(double progress)
{
    // Readers copy their databases through here as well, before any job has begun.
    if (_count > 0)
        drawBar(progress);
    return !Interrupt::requested();
}

void ConsoleExportHost::showItem(const ExportItem& item)
{
    ++_done;
    const QString folder = folderAtFault(item);
    if (folder.isNull()) {
        sayItem(item);
    } else if (!_saidFolders.contains(folder)) {
        _saidFolders.insert(folder);
        clearBar();
        Terminal::say(QStringLiteral("%1: %2").arg(folder, item.why));
    }
}

QString ConsoleExportHost::folderAtFault(const ExportItem& item) const
{
    if (item.result != ExportItem::Result::Failed || item.to.isEmpty())
        return {};
    for (const QString& folder : _destinations) {
        if (PathName::isInside(item.to, folder) && !QFileInfo(folder).isDir())
            return folder;
    }
    return {};
}

void ConsoleExportHost::sayItem(const ExportItem& item)
{
    if (_style == Style::Lines) {
        Terminal::say(QStringLiteral("[%1/%2] %3").arg(_done).arg(_count).arg(itemLine(item)));
    } else if (item.isFailure()) {
        clearBar();
        Terminal::say(itemLine(item));
    }
}

void ConsoleExportHost::showFinish(bool /*canceled*/, bool /*alert*/)
{
    clearBar();
    _count = 0;
}

std::optional<ClashAnswer> ConsoleExportHost::askClash(const QString& path)
{
    if (_answerForAll)
        return _answerForAll;
    if (!Terminal::canAsk())
        return ClashAnswer{KeepBothRule, false};
    clearBar();
    Terminal::say(ClashRule::question(path));
    for (;;) {
        const QString typed = Terminal::ask(Words::tr("(n)umber, (o)verwrite, (s)kip, (a)bort; a "
                                                      "capital letter answers for all:"))
                                  .trimmed();
        if (typed.isEmpty() || typed.toLower() == u"a" || Interrupt::requested()) {
            Interrupt::request(); // of the whole command, not of this part alone
            return std::nullopt;
        }
        if (const std::optional<int> rule = ruleOf(typed.toLower())) {
            const ClashAnswer answer = {*rule, false};
            if (typed != typed.toLower())
                _answerForAll = answer;
            return answer;
        }
    }
}

std::optional<bool> ConsoleExportHost::askForHandOver()
{
    return false; // the console copies into folders only
}

void ConsoleExportHost::handOver(const QString& /*path*/,
                                 const std::vector<Playlist*>& /*playlists*/)
{
}

void ConsoleExportHost::drawBar(double progress)
{
    if (_style != Style::Bar)
        return;
    if (_lastDrawn.isValid() && _lastDrawn.elapsed() < MillisecondsBetweenDrawings)
        return;
    _lastDrawn.start();
    const double fraction = _count > 0 ? std::clamp(progress / _count, 0.0, 1.0) : 0.0;
    const int filled = int(fraction * BarWidth);
    const QString bar = QString(filled, u'#') + QString(BarWidth - filled, u'.');
    const QString line = QStringLiteral("\r[%1] %2/%3 %4")
                             .arg(bar)
                             .arg(std::min(_done + 1, _count))
                             .arg(_count)
                             .arg(Terminal::field(_text, TextWidth));
    std::fputs(line.toUtf8().constData(), stderr);
}

void ConsoleExportHost::clearBar()
{
    if (_style == Style::Bar)
        std::fputs("\r\033[K", stderr);
    _lastDrawn.invalidate();
}
