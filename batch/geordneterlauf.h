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
/// ahead, so that memory does not grow with the number of pieces.
template <typename Result>
class GeordneterLauf
{
public:
    /// Does the piece of a number, for one thread that keeps what it needs inside.
    using Arbeiter = std::function<Result(std::size_t)>;

    /// Runs the pieces 0 to \a count - 1 on \a threads threads, each with a worker that \a
    /// makeWorker makes on it, and calls \a take on the calling thread. One thread is the calling
    /// one. What a worker throws is thrown where its result would have been taken; what follows is
    /// not done.
    static void laufe(std::size_t count, unsigned threads,
                      const std::function<Arbeiter()> &makeWorker,
                      const std::function<void(Result)> &take)
    {
        if (threads <= 1 || count <= 1) {
            const Arbeiter work = makeWorker();
            for (std::size_t i = 0; i < count; ++i)
                take(work(i));
            return;
        }
        GeordneterLauf run(count, threads);
        std::vector<std::jthread> workers;
        try {
            run.starte(workers, threads, makeWorker);
            for (std::size_t i = 0; i < count; ++i)
                take(run.naechstes(i));
        } catch (...) {
            run.beende();
            throw;
        }
    }

private:
    struct Platz
    {
        std::optional<Result> result;
        std::exception_ptr error;
        bool filled() const { return result || error; }
    };

    GeordneterLauf(std::size_t count, unsigned threads) : m_count(count), m_places(4 * threads) {}

    // Goes on with fewer threads where the system gives no more.
    void starte(std::vector<std::jthread> &workers, unsigned threads,
                const std::function<Arbeiter()> &makeWorker)
    {
        try {
            for (unsigned i = 0; i < threads && i < m_count; ++i)
                workers.emplace_back([this, &makeWorker] { arbeite(makeWorker); });
        } catch (const std::system_error &) {
            if (workers.empty())
                throw;
        }
    }

    void arbeite(const std::function<Arbeiter()> &makeWorker)
    {
        Arbeiter work;
        while (const std::optional<std::size_t> number = beginne()) {
            Platz place;
            try {
                if (!work)
                    work = makeWorker();
                place.result = work(*number);
            } catch (...) {
                place.error = std::current_exception();
            }
            const std::lock_guard lock(m_mutex);
            m_places[*number % m_places.size()] = std::move(place);
            m_filled.notify_one();
        }
    }

    // The number of the next piece, as soon as there is a place for its result.
    std::optional<std::size_t> beginne()
    {
        std::unique_lock lock(m_mutex);
        m_free.wait(lock, [this] {
            return m_stopped || m_next == m_count || m_next < m_taken + m_places.size();
        });
        if (m_stopped || m_next == m_count)
            return std::nullopt;
        return m_next++;
    }

    Result naechstes(std::size_t number)
    {
        std::unique_lock lock(m_mutex);
        Platz &place = m_places[number % m_places.size()];
        m_filled.wait(lock, [&] { return place.filled(); });
        Platz taken = std::exchange(place, {});
        ++m_taken;
        m_free.notify_all();
        if (taken.error)
            std::rethrow_exception(taken.error);
        return std::move(*taken.result);
    }

    void beende()
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
        m_free.notify_all();
    }

    std::size_t m_count;
    std::mutex m_mutex;
    std::condition_variable m_filled;
    std::condition_variable m_free;
    std::vector<Platz> m_places; ///< a ring
    std::size_t m_next = 0;      ///< the piece that begins next
    std::size_t m_taken = 0;
    bool m_stopped = false;
};
