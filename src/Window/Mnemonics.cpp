#include "Window/Mnemonics.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QSet>

void Mnemonics::complete(const QMenu& menu)
{
    QSet<QChar> taken;
    const auto letterOf = [](const QAction* item) {
        const QKeySequence keys = QKeySequence::mnemonic(item->text());
        return keys.isEmpty() ? QChar() : QChar(char16_t(keys[0].key())).toLower();
    };
    for (const QAction* item : menu.actions())
        taken.insert(letterOf(item));
    for (QAction* item : menu.actions()) {
        const QString text = item->text();
        if (!letterOf(item).isNull())
            continue;
        for (qsizetype at = 0; at < text.size(); ++at) {
            const QChar letter = text[at].toLower();
            if (letter.isLetter() && !taken.contains(letter)) {
                taken.insert(letter);
                item->setText(QString(text).insert(at, u'&'));
                break;
            }
        }
    }
}
