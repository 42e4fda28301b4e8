#pragma once

#include <QStringView>

/// Compares texts in which runs of digits count as numbers, however long: "2.10" comes after
/// "2.9". Gives less than, equal to or greater than zero.
int compareNumerically(QStringView left, QStringView right);
