#pragma once

#include "Services/Library/GameLibrary.h"

namespace ludarium {

/// The record to change: the shared one itself while nobody else holds it, which is so until a list is published.
Game &changeable(GamePtr &game);

/// Answers a question about platform names, and remembers the last answer: games come in runs of one platform.
class PlatformTest {
  public:
    explicit PlatformTest(bool (*question)(const QString &name)) : m_question(question) {}
    bool operator()(const QString &name) {
        if (name != m_name || m_name.isNull()) {
            m_name = name;
            m_answer = m_question(name);
        }
        return m_answer;
    }

  private:
    bool (*m_question)(const QString &name);
    QString m_name;
    bool m_answer = false;
};

/// Brings the status of the last look at the disk and the user's data into records that nobody else holds yet. The ids
/// are looked up among the games, not the games among the ids, of which there are few. Returns how many games changed.
qsizetype refreshRecords(GameList &games, const QHash<QString, qsizetype> &positions, const SeenStatuses &seen,
                         const UserData::Values &user);

/// Gives every game those of `applications` that name it.
void associateAdditionalApplications(GameList &games, const QList<AdditionalApplication> &applications);

} // namespace ludarium
