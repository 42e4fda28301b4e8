#include "Window/HelpDocument.h"

#include "Base/Program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QString HelpDocument::path()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString document = QDir::cleanPath(programs.filePath(
        QStringLiteral("../share/zell-transfer/%1.pdf").arg(Program::helpFileName())));
    return QFileInfo::exists(document) ? document : QString();
}
