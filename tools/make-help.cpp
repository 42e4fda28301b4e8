// Makes the help document, a PDF, from its Markdown text: make-help HELP.md LOGO.svg OUT.pdf.
// Needs no screen: QT_QPA_PLATFORM=offscreen.

#include "Base/Program.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <cstdio>
#include <vector>

namespace
{
const QColor Accent(0x2f, 0x6f, 0xe0);
const QColor Ink(0x22, 0x28, 0x33);
const QColor Quiet(0x6b, 0x76, 0x86);
const QColor Rule(0xd5, 0xdb, 0xe5);
const QColor HeaderFill(0xea, 0xf0, 0xfc);
const QColor KeyFill(0xee, 0xf1, 0xf6);

constexpr int Resolution = 600;
constexpr double MarginMm = 22;
constexpr double IconSize = 17; // of the document's 96 to an inch

/// The Markdown text as a styled document. Pictures are read relative to the text's folder and
/// drawn from their SVG many times larger than shown, so that they stay sharp in print.
class HelpText final : public QTextDocument
{
public:
    explicit HelpText(const QString& path)
        : _folder(QFileInfo(path).path() + u'/')
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return;
        QFont font;
        font.setFamilies({QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
        font.setPointSizeF(9.5);
        setDefaultFont(font);
        setDocumentMargin(0);
        setMarkdown(QString::fromUtf8(file.readAll()), MarkdownDialectGitHub);
        for (QTextBlock block = begin(); block.isValid(); block = block.next())
            style(block);
        for (QTextFrame* frame : rootFrame()->childFrames()) {
            if (auto* table = qobject_cast<QTextTable*>(frame))
                style(*table);
        }
    }

    /// Lays the text out in pages and keeps each heading with what follows it.
    void paginate(QPaintDevice& device, QSizeF size)
    {
        documentLayout()->setPaintDevice(&device);
        setPageSize(size);
        QTextBlock above;
        for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
            // A subheading right below its heading moves with it.
            const int level = block.blockFormat().headingLevel();
            if (level && !above.blockFormat().headingLevel())
                keepTogether(block, lastOfOpening(block));
            above = block;
        }
    }

    [[nodiscard]] int pageOf(const QTextBlock& block) const
    {
        return int(documentLayout()->blockBoundingRect(block).top() / pageSize().height());
    }

private:
    QVariant loadResource(int type, const QUrl& name) override
    {
        QSvgRenderer svg(_folder + name.path());
        if (type != QTextDocument::ImageResource || !svg.isValid())
            return QTextDocument::loadResource(type, name);
        constexpr int Pixels = 192;
        QImage image(Pixels, Pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg.render(&painter);
        return image;
    }

    static void style(const QTextBlock& block)
    {
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        const int level = format.headingLevel();
        format.setLineHeight(level ? 100 : 128, QTextBlockFormat::ProportionalHeight);
        const bool inTable = cursor.currentTable() != nullptr;
        if (level == 2) {
            format.setTopMargin(34);
            format.setBottomMargin(10);
        } else if (level == 3) {
            format.setTopMargin(18);
            format.setBottomMargin(6);
        } else if (!inTable) {
            format.setTopMargin(block.textList() ? 2 : 6);
            format.setBottomMargin(block.textList() ? 2 : 6);
        }
        cursor.setBlockFormat(format);
        styleWords(block, level);
    }

    static void styleWords(const QTextBlock& block, int level)
    {
        // The fragments are gathered first: a change of their format would end the walk.
        std::vector<QTextFragment> fragments;
        for (auto it = block.begin(); !it.atEnd(); ++it)
            fragments.push_back(it.fragment());
        for (const QTextFragment& fragment : fragments) {
            QTextCursor cursor(block);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            if (fragment.charFormat().isImageFormat()) {
                QTextImageFormat image = fragment.charFormat().toImageFormat();
                image.setWidth(IconSize);
                image.setHeight(IconSize);
                image.setVerticalAlignment(QTextCharFormat::AlignMiddle);
                cursor.setCharFormat(image);
            } else {
                cursor.setCharFormat(words(fragment.charFormat(), level));
            }
        }
    }

    static QTextCharFormat words(QTextCharFormat format, int level)
    {
        format.setForeground(level ? Accent : Ink);
        if (level) {
            format.clearProperty(QTextFormat::FontSizeAdjustment);
            format.setFontPointSize(level == 2 ? 17 : 11.5);
            format.setFontWeight(QFont::Bold);
        } else if (format.fontFixedPitch()) {
            format.setFontFamilies({QStringLiteral("DejaVu Sans Mono")});
            format.setFontPointSize(8.5);
            format.setBackground(KeyFill);
        }
        return format;
    }

    static void style(QTextTable& table)
    {
        QTextTableFormat format = table.format();
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        format.setBorder(0);
        format.setCellSpacing(0);
        format.setCellPadding(5);
        format.setTopMargin(8);
        format.setBottomMargin(10);
        format.setHeaderRowCount(1);
        format.setColumnWidthConstraints(widths(table));
        table.setFormat(format);
        for (int row = 0; row < table.rows(); ++row) {
            for (int column = 0; column < table.columns(); ++column)
                styleCell(table.cellAt(row, column), row);
        }
    }

    /// A column of icons is narrow, and the last column takes what the others leave.
    static QList<QTextLength> widths(const QTextTable& table)
    {
        const auto percent = [](double share) {
            return QTextLength(QTextLength::PercentageLength, share);
        };
        if (table.columns() == 2)
            return {percent(27), percent(73)};
        const bool icons = table.cellAt(0, 0).firstCursorPosition().block().text().isEmpty();
        return icons ? QList{percent(6), percent(22), percent(72)}
                     : QList{percent(16), percent(48), percent(36)};
    }

    static void styleCell(QTextTableCell cell, int row)
    {
        QTextTableCellFormat format = cell.format().toTableCellFormat();
        format.setVerticalAlignment(QTextCharFormat::AlignTop);
        format.setBottomBorder(0.75);
        format.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBottomBorderBrush(row == 0 ? Accent : Rule);
        if (row == 0)
            format.setBackground(HeaderFill);
        cell.setFormat(format);
    }

    /// The last block of what a heading opens: its first table, if it has one, else its first
    /// paragraph.
    static QTextBlock lastOfOpening(const QTextBlock& heading)
    {
        QTextBlock block = heading.next();
        while (block.isValid() && block.blockFormat().headingLevel())
            block = block.next();
        for (QTextBlock next = block; next.isValid(); next = next.next()) {
            if (next.blockFormat().headingLevel())
                break;
            if (const QTextTable* table = QTextCursor(next).currentTable())
                return table->lastCursorPosition().block();
        }
        return block.isValid() ? block : heading;
    }

    void keepTogether(const QTextBlock& first, const QTextBlock& last)
    {
        const double end = documentLayout()->blockBoundingRect(last).bottom();
        if (pageOf(first) == int(end / pageSize().height()))
            return;
        QTextBlockFormat format = first.blockFormat();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        format.setTopMargin(0);
        QTextCursor(first).setBlockFormat(format);
        // Laid out from the start: what a partial layout leaves around tables is not drawn.
        markContentsDirty(0, characterCount());
    }

    QString _folder;
};

/// Draws the title page with the table of contents, then the pages of the text.
class Book
{
public:
    Book(HelpText& text, QSvgRenderer& logo, QPdfWriter& writer)
        : _text(text)
        , _logo(logo)
        , _writer(writer)
        , _painter(&writer)
        , _page(0, 0, writer.width(), writer.height())
    {
        _font = text.defaultFont();
        _text.paginate(writer, _page.size());
    }

    void draw()
    {
        drawTitle();
        drawContents();
        for (int page = 0; page < _text.pageCount(); ++page) {
            _writer.newPage();
            drawPage(page);
        }
    }

private:
    static double mm(double length) { return length * Resolution / 25.4; }
    /// The title page is a page, and it is the first.
    static int number(int page) { return page + 2; }

    void write(const QRectF& place, int flags, const QString& words, double size,
               const QColor& colour, QFont::Weight weight = QFont::Normal)
    {
        _font.setPointSizeF(size);
        _font.setWeight(weight);
        _painter.setFont(_font);
        _painter.setPen(colour);
        _painter.drawText(place, flags | Qt::AlignVCenter, words);
    }

    void drawTitle()
    {
        const double height = mm(26);
        const QSizeF size = _logo.defaultSize();
        _logo.render(&_painter, QRectF(0, 0, height * size.width() / size.height(), height));
        write({0, mm(38), _page.width(), mm(14)}, Qt::AlignLeft, Program::briefName(), 23, Ink,
              QFont::Bold);
        write({0, mm(51), _page.width(), mm(8)}, Qt::AlignLeft,
              QStringLiteral("User's guide, version ") + Program::version(), 11, Quiet);
        _painter.fillRect(QRectF(0, mm(64), mm(24), mm(1.2)), Accent);
    }

    void drawContents()
    {
        double y = mm(76);
        for (QTextBlock block = _text.begin(); block.isValid(); block = block.next()) {
            const int level = block.blockFormat().headingLevel();
            if (level != 2 && level != 3)
                continue;
            const bool chapter = level == 2;
            y += mm(chapter ? 2.4 : 0);
            const QRectF line(mm(chapter ? 0 : 6), y, _page.width() - mm(chapter ? 0 : 6), mm(5.6));
            const QFont::Weight weight = chapter ? QFont::Bold : QFont::Normal;
            const QColor& colour = chapter ? Ink : Quiet;
            const double size = chapter ? 10 : 9;
            write(line, Qt::AlignLeft, block.text(), size, colour, weight);
            write(line, Qt::AlignRight, QString::number(number(_text.pageOf(block))), size, colour);
            y += mm(chapter ? 5.8 : 5);
        }
    }

    void drawPage(int page)
    {
        const double top = page * _page.height();
        _painter.save();
        _painter.translate(0, -top);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(0, top, _page.width(), _page.height());
        context.palette.setColor(QPalette::Text, Ink);
        _painter.setClipRect(context.clip);
        _text.documentLayout()->draw(&_painter, context);
        _painter.restore();

        const QRectF foot(0, _page.height() + mm(6), _page.width(), mm(6));
        _painter.fillRect(QRectF(0, foot.top() - mm(1), foot.width(), mm(0.2)), Rule);
        write(foot, Qt::AlignLeft, Program::briefName(), 8, Quiet);
        write(foot, Qt::AlignRight, QString::number(number(page)), 8, Quiet);
    }

    HelpText& _text;
    QSvgRenderer& _logo;
    QPdfWriter& _writer;
    QPainter _painter;
    QRectF _page;
    QFont _font;
};

/// The part of the text before the first chapter is the title page's, which is drawn.
void dropTitle(QTextDocument& text)
{
    QTextCursor cursor(&text);
    QTextBlock block = text.begin();
    while (block.isValid() && block.blockFormat().headingLevel() != 2)
        block = block.next();
    if (!block.isValid())
        return;
    cursor.setPosition(block.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}
} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc != 4) {
        std::fputs("Usage: make-help HELP.md LOGO.svg OUT.pdf\n", stderr);
        return 2;
    }
    const QStringList arguments = QGuiApplication::arguments();
    HelpText text(arguments[1]);
    QSvgRenderer logo(arguments[2]);
    if (text.isEmpty() || !logo.isValid()) {
        std::fputs("make-help: the text or the logo cannot be read\n", stderr);
        return 1;
    }
    dropTitle(text);

    QFile file(arguments[3]);
    if (!file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "make-help: %s\n", qPrintable(file.errorString()));
        return 1;
    }
    QPdfWriter writer(&file);
    writer.setResolution(Resolution);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(MarginMm, MarginMm, MarginMm, MarginMm + 4),
                          QPageLayout::Millimeter);
    writer.setTitle(Program::briefName() + QStringLiteral(": user's guide"));
    writer.setCreator(Program::briefName() + u' ' + Program::version());
    Book(text, logo, writer).draw();
    return 0;
}
