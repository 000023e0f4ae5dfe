#include "protocol/windows/slices.h"

#include <QElapsedTimer>

#include <utility>

namespace {

constexpr int sliceMilliseconds = 15;  // short enough to scroll and type meanwhile
constexpr int pausedMilliseconds = 30; // long enough for the window to be painted

} // namespace

Slices::Slices(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &Slices::runSlice);
}

void Slices::start(Step step, Ended ended)
{
    drop();
    m_step = std::move(step);
    m_ended = std::move(ended);
    if (m_held == 0)
        m_timer.start(0);
    runSlice();
}

void Slices::drop()
{
    ++m_generation;
    m_timer.stop();
    m_step = nullptr;
    m_ended = nullptr;
}

void Slices::hold()
{
    ++m_held;
    m_timer.stop();
}

void Slices::release()
{
    if (--m_held == 0 && m_step)
        m_timer.start(0);
}

void Slices::runSlice()
{
    if (m_inSlice || m_held > 0 || !m_step)
        return;
    m_inSlice = true;
    m_paused = false;
    const int generation = m_generation;
    const Step step = m_step; // outlives a drop() from within
    std::exception_ptr error;
    bool more = true;
    QElapsedTimer time;
    time.start();
    try {
        while (more && !m_paused && generation == m_generation &&
               time.elapsed() < sliceMilliseconds)
            more = step();
    } catch (...) {
        error = std::current_exception(); // must not reach the event loop
    }
    m_inSlice = false;
    if (generation != m_generation)
        return;
    if (error || !more) {
        end(error);
        return;
    }
    if (m_held == 0)
        m_timer.start(m_paused ? pausedMilliseconds : 0);
    emit progressed();
}

void Slices::end(const std::exception_ptr &error)
{
    const Ended ended = m_ended;
    drop();
    ended(error);
}
