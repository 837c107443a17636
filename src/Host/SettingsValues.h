#pragma once

#include "Host/SqliteDatabase.h"

#include <QVariant>

/// The form in which values stand in the tables of a settings store.
namespace ludarium::SettingsValues {

/// What stands there makes no sense.
[[noreturn]] void failAsDamaged(const char *what);

void bind(SqliteStatement &statement, int typeIndex, int valueIndex, const QVariant &value);
/// The value of a row, an empty map for a map, invalid for a key that is marked as absent. What makes no sense throws
/// SQLITE_CORRUPT.
QVariant read(const SqliteStatement &row, int typeColumn, int valueColumn);

/// A value in the form in which it is kept (integers are qint64, reals double); throws SettingsError when values of
/// its type cannot be kept.
QVariant normalised(const QVariant &value);
/// Equal in value and type, a date also in its zone.
bool isSame(const QVariant &left, const QVariant &right);

} // namespace ludarium::SettingsValues
