#include "Base/Program.h"

QString Program::briefName()
{
    return QStringLiteral("Zell iPod iPhone Transfer");
}

QString Program::fullName()
{
    return QStringLiteral("Zell iPod/iPhone Transfer");
}

QString Program::serviceName()
{
    return QStringLiteral("Zell iPod/iPhone to Mac Transfer");
}

QString Program::version()
{
    return QStringLiteral(ZELL_VERSION);
}

QString Program::notice()
{
    return QStringLiteral(
        "Copyright © 2026 the Zell authors. Free software under the MIT license.");
}

QString Program::supportAddress()
{
    return QStringLiteral("support@zell.example");
}
