#pragma once

#include "office/Error.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

namespace tessaro::office {

/// The line to the process, for this room alone: starts it, keeps its context, runs every call on one worker thread and
/// notices when it dies. Shared by the handles of documents, so that each finds out that its process is gone.
class ProcessLink final : public QObject {
    Q_OBJECT

  public:
    /// `shown`: with windows, for a host; otherwise the process never shows any.
    explicit ProcessLink(bool shown);
    ~ProcessLink() override;

    /// Also ends what a crashed run has left on this profile.
    void SetProfileFolder(const QString& folder);
    /// Finds the process alive or starts it; throws Error.
    void Start();
    /// Starts the process if none runs, without waiting until it answers.
    void StartInAdvance();
    void Quit();
    [[nodiscard]] bool IsRunning() const;
    [[nodiscard]] qint64 ProcessId() const;
    /// Counts the processes: a document that was opened under another number is dead.
    [[nodiscard]] unsigned Generation() const;

    /// Runs the work on the worker thread and waits for it, while the window paints and takes no input. What UNO throws
    /// becomes an Error. When the limit passes, the process is ended and Failure::TimedOut thrown; never returns while
    /// the work still runs.
    void Run(const std::function<void()>& work, std::chrono::milliseconds limit);
    void Run(const std::function<void()>& work);
    /// The same without waiting and without an error; for releasing references.
    void Post(std::function<void()> work);
    /// Asks the process for a sign of life, without waiting for it; one that gives none and does nothing is ended. To
    /// be called every few seconds while nobody else calls.
    void Probe();
    /// How long the process may do nothing before it counts as hung.
    void SetPatience(std::chrono::milliseconds patience);
    /// Lets the process ask the system for at most so many bytes of memory from now on; what it is refused ends the
    /// call or the process. Until the next limit, or its end.
    void LimitMemory(qint64 bytes);
    void SetTimeLimit(std::chrono::milliseconds limit);
    [[nodiscard]] std::chrono::milliseconds TimeLimit() const;

    // On the worker thread only.
    [[nodiscard]] com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> Context() const;
    /// A service of the process by its name.
    [[nodiscard]] com::sun::star::uno::Reference<com::sun::star::uno::XInterface> Service(const char* name) const;

  Q_SIGNALS:
    /// The process died, or was ended because it `hung`. Told from the event loop, after the call that met it.
    void Lost(bool hung);
    /// The process listens.
    void Connected();

  private:
    void StartProcess();
    void Connect();
    bool TryConnect();
    void EndProcess();
    void KillProcess() const;
    [[nodiscard]] bool Answers();
    [[nodiscard]] bool RunOnWorker(const std::function<void()>& work, std::chrono::milliseconds limit);
    void EndHung();
    void TellLost();
    void PassLostOn();

    struct State;
    std::unique_ptr<State> state_;
};

} // namespace tessaro::office
