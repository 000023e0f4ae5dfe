#pragma once

#include <QObject>
#include <QTimer>

#include <exception>
#include <functional>

/// Runs long work in slices between the events of the window, one work at a time.
class Slices : public QObject
{
    Q_OBJECT

public:
    /// Does a little. \returns whether there is more; may raise errors.
    using Step = std::function<bool()>;
    /// Called once when the work has ended by itself; with the error it ended with, or null.
    using Ended = std::function<void(const std::exception_ptr &error)>;

    explicit Slices(QObject *parent = nullptr);

    /// Runs the first slice at once, the others from the event loop. Drops what was running.
    void start(Step step, Ended ended);
    /// Drops the work without calling its end.
    void drop();
    /// Ends the current slice after its step and waits a moment, so that what there is is painted.
    void pause() { m_paused = true; }
    /// Runs no slices until the matching release(): for as long as a dialog asks something.
    void hold();
    void release();
    bool isRunning() const { return static_cast<bool>(m_step); }

signals:
    /// A slice has ended and there is more to do.
    void progressed();

private:
    void runSlice();
    void end(const std::exception_ptr &error);

    QTimer m_timer;
    Step m_step;
    Ended m_ended;
    bool m_inSlice = false; ///< a step may run an event loop of its own
    bool m_paused = false;
    int m_held = 0;       ///< how often
    int m_generation = 0; ///< tells a work that was replaced during its own step
};
