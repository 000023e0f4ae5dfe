#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

/// Does numbered pieces of work on several threads and takes their results in the order of the
/// numbers.
///
/// Only a few results wait for an earlier one to be taken: nobody begins a piece that lies further
/// ahead, so that memory does not grow with the number of pieces. The thread that has done the
/// piece whose turn it is takes it and what waits behind it; a thread of its own for taking would
/// cost two switches a piece.
template <typename Result>
class GeordneterLauf
{
public:
    /// Does the piece of a number, for one thread that keeps what it needs inside.
    using Arbeiter = std::function<Result(std::size_t)>;

    /// Runs the pieces 0 to \a count - 1 on \a threads threads, the calling one among them, each
    /// with a worker that \a makeWorker makes on it. Calls \a take for one result after the other,
    /// never for two at a time, on any of the threads. What a worker or \a take throws ends the run
    /// in its place and is thrown here.
    static void laufe(std::size_t count, unsigned threads,
                      const std::function<Arbeiter()> &makeWorker,
                      const std::function<void(Result)> &take)
    {
        GeordneterLauf run(count, threads, makeWorker, take);
        {
            std::vector<std::jthread> others;
            try {
                for (unsigned i = 1; i < threads && i < count; ++i)
                    others.emplace_back([&run] { run.arbeite(); });
            } catch (const std::system_error &) {
                // The system gives no more threads: those that are there do all.
            }
            run.arbeite();
        }
        if (run.m_error)
            std::rethrow_exception(run.m_error);
    }

private:
    struct Platz
    {
        std::optional<Result> result;
        std::exception_ptr error;
        bool filled() const { return result || error; }
    };

    GeordneterLauf(std::size_t count, unsigned threads, const std::function<Arbeiter()> &makeWorker,
                   const std::function<void(Result)> &take)
        : m_count(count), m_makeWorker(makeWorker), m_take(take), m_places(4 * threads)
    {
    }

    void arbeite()
    {
        Arbeiter work;
        while (const std::optional<std::size_t> number = beginne()) {
            Platz place;
            try {
                if (!work)
                    work = m_makeWorker();
                place.result = work(*number);
            } catch (...) {
                place.error = std::current_exception();
            }
            lege(*number, std::move(place));
        }
    }

    // The number of the next piece, as soon as there is a place for its result.
    std::optional<std::size_t> beginne()
    {
        std::unique_lock lock(m_mutex);
        m_free.wait(lock, [this] {
            return m_error || m_next == m_count || m_next < m_taken + m_places.size();
        });
        if (m_error || m_next == m_count)
            return std::nullopt;
        return m_next++;
    }

    // Puts a result in its place, and takes all whose turn it is unless another thread is at it.
    void lege(std::size_t number, Platz place)
    {
        std::unique_lock lock(m_mutex);
        m_places[number % m_places.size()] = std::move(place);
        if (m_taking)
            return;
        m_taking = true;
        while (!m_error && m_places[m_taken % m_places.size()].filled()) {
            Platz next = std::exchange(m_places[m_taken % m_places.size()], {});
            lock.unlock();
            nimm(next);
            lock.lock();
            ++m_taken;
            m_error = next.error;
            m_free.notify_all();
        }
        m_taking = false;
    }

    void nimm(Platz &place)
    {
        if (place.error)
            return;
        try {
            m_take(std::move(*place.result));
        } catch (...) {
            place.error = std::current_exception();
        }
    }

    std::size_t m_count;
    const std::function<Arbeiter()> &m_makeWorker;
    const std::function<void(Result)> &m_take;
    std::mutex m_mutex;
    std::condition_variable m_free;
    std::vector<Platz> m_places; ///< a ring
    std::size_t m_next = 0;      ///< the piece that begins next
    std::size_t m_taken = 0;
    bool m_taking = false;
    std::exception_ptr m_error; ///< ends the run
};
