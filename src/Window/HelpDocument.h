#pragma once

#include <QString>

/// The user's guide that comes with the program.
namespace HelpDocument
{
/// Where it stands; empty when it is not there. Beside an installed program that is
/// "../share/zell-transfer", in a build folder "share/zell-transfer".
QString path();
} // namespace HelpDocument
