#pragma once

#include <QObject>

#include <memory>

// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal on the thread that
// created the watcher, so the program quits through its event loop (and stops
// monitoring on the way) instead of dying inside a signal handler. One watcher
// per process.
class QuitSignalWatcher final : public QObject {
    Q_OBJECT

public:
    explicit QuitSignalWatcher(QObject *parent = nullptr);
    ~QuitSignalWatcher() override;

signals:
    void quitRequested(int signalNumber);

private:
    struct Pipe;
    std::unique_ptr<Pipe> m_pipe;
};
