#pragma once

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QTimer>
#include <memory>

union SDL_Event;

namespace ludarium {

/// The gamepads of the machine as a few actions, whichever pad they come from. Pads may come and go. Only one object of
/// this class may exist at a time. While nobody listens nothing is polled, and without a pad nothing is either: the
/// folder of the input devices tells when one may have come.
class Gamepad : public QObject {
    Q_OBJECT
  public:
    enum class Action { Left, Right, Up, Down, Select, Back, Menu, PreviousPage, NextPage, PreviousArea, NextArea };
    Q_ENUM(Action)

    /// `deviceFolder` is where the operating system lists input devices. Where there is no such folder, a slow timer
    /// looks for pads.
    explicit Gamepad(QString deviceFolder = QStringLiteral("/dev/input"), QObject *parent = nullptr);
    ~Gamepad() override;

    /// False at first. What was pressed while nobody listened is forgotten.
    void setListening(bool listening);
    bool isListening() const { return m_listening; }
    int padCount() const { return int(m_pads.size()); }

    // Milliseconds until a direction that is held repeats, and from then on between its repeats.
    static constexpr int repeatDelay = 400;
    static constexpr int repeatInterval = 90;

  Q_SIGNALS:
    void acted(ludarium::Gamepad::Action action);
    void padCountChanged();

  private:
    struct Pad;
    /// A part of a pad that is pressed now.
    struct Held {
        int pad;
        int part;
        Action action;
    };

    bool start();
    void look();
    void poll();
    void chooseTimer();
    void takeEvents(bool quietly);
    void take(const SDL_Event &event, bool quietly);
    void open(int device);
    void close(int pad);
    void moveStick(Pad &pad, int id, bool quietly);
    void press(int pad, int part, Action action, bool quietly);
    void release(int pad, int part);
    void repeat();

    const QString m_deviceFolder;
    bool m_started = false;
    bool m_listening = false;
    QHash<int, std::shared_ptr<Pad>> m_pads;
    QList<Held> m_held; ///< in the order of pressing
    qint64 m_nextRepeat = 0;
    qint64 m_lookUntil = 0;
    QElapsedTimer m_clock;
    QTimer m_timer;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};

} // namespace ludarium
