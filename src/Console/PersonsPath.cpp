#include "Console/PersonsPath.h"

#include <QDir>
#include <QFile>

#include <pwd.h>

QString PersonsPath::expanded(const QString& typed)
{
    if (!typed.startsWith(u'~'))
        return typed;
    const QString name = typed.section(u'/', 0, 0).sliced(1);
    const QString rest = typed.sliced(1 + name.size());
    if (name.isEmpty())
        return QDir::homePath() + rest;
    const passwd* person = getpwnam(QFile::encodeName(name).constData());
    return person ? QFile::decodeName(person->pw_dir) + rest : typed; // a name like any other
}
