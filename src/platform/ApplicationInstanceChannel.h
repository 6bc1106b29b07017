#pragma once

#include <QObject>
#include <QString>

#include <memory>

// One running program per user: the first start listens on a local socket in
// the user's runtime directory; a later start finds it, asks it to show its
// window, and exits. A socket file left by a run that crashed answers no
// connection and is replaced.
class ApplicationInstanceChannel final : public QObject {
    Q_OBJECT

public:
    enum class Claim {
        primary,   // this process is the running instance and now listens
        forwarded, // another instance runs and was asked to show its window
        alone,     // neither was possible (no writable runtime directory): run alone
    };

    explicit ApplicationInstanceChannel(QString socketPath, QObject *parent = nullptr);
    ~ApplicationInstanceChannel() override;

    Claim claim();
    const QString &socketPath() const { return m_socketPath; }

    // $XDG_RUNTIME_DIR/kilnwarden.socket, else a per-uid name in /tmp.
    static QString defaultSocketPath();

signals:
    // Another start of the program asked this one to show its window.
    void showRequested();

private:
    struct Listener;
    QString m_socketPath;
    std::unique_ptr<Listener> m_listener;
};
