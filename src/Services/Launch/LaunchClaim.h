#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace ludarium {

/// The right to start a game, which one of our programs has at a time: from before the look whether it runs until its
/// session is journalled. Ends with its process.
class LaunchClaim {
  public:
    /// `folder` is shared by all programs of the user.
    LaunchClaim(const QString &folder, const QString &gameId);

    /// False while another launch of the game is under way. A folder that cannot be used stops nobody.
    bool isHeld() const { return m_held; }

  private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_held = true;
};

} // namespace ludarium
