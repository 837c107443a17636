#pragma once

#include <QString>

namespace ludarium {

/// Copies a file or folder over what is there, so that nothing that only the target holds is lost: folders are merged,
/// a file that differs is first kept beside the new one as "NAME.kept", "NAME.kept2", …, and one that another of the
/// game's driver folders holds as well needs no keeping. A file is wholly old or wholly new at any moment, and a kill
/// leaves both. Names match whatever their case, as DOS knows one spelling of each. Links are not copied.
///
/// Returns why it failed, empty on success.
QString copyOver(const QString &source, const QString &target);

/// Removes what a copy that was killed left in a folder.
void sweepCopies(const QString &folder);

} // namespace ludarium
