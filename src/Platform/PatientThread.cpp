#include "Platform/PatientThread.h"

#include "Base/Fault.h"

#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <list>
#include <mutex>
#include <thread>

namespace
{
constexpr std::chrono::milliseconds Farewell(2000);
/// At the end of the program, when nothing is left to be done that matters.
constexpr std::chrono::milliseconds LastFarewell(100);

void blockPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

/// The threads that were started. One that has ended is joined at the next start, so that what
/// libraries keep for a thread is gone before the libraries are.
class Crew
{
public:
    /// Never destroyed: threads may be in it for as long as the process lives.
    static Crew& shared()
    {
        static auto* const crew = new Crew;
        return *crew;
    }

    void start(PatientThread::Job job)
    {
        const std::lock_guard lock(_mutex);
        joinEnded();
        Member& member = _members.emplace_back();
        member.thread = std::thread([this, &member, job = std::move(job)]() mutable {
            blockPipeSignal();
            Fault::guard(job);
            job = {};
            const std::lock_guard endLock(_mutex);
            member.hasEnded = true;
            _changed.notify_all();
        });
    }

    bool joinAllWithin(std::chrono::milliseconds limit)
    {
        std::unique_lock lock(_mutex);
        _changed.wait_for(lock, limit, [this] {
            joinEnded();
            return _members.empty();
        });
        return _members.empty();
    }

private:
    struct Member {
        std::thread thread;
        bool hasEnded = false; ///< but for its last few instructions
    };

    void joinEnded()
    {
        _members.remove_if([](Member& member) {
            if (member.hasEnded)
                member.thread.join();
            return member.hasEnded;
        });
    }

    std::mutex _mutex;
    std::condition_variable _changed;
    std::list<Member> _members;
};
} // namespace

/// Shared with the thread, which may outlive the object.
struct PatientThread::State {
    std::mutex mutex;
    std::condition_variable hasWork; ///< for the thread
    std::condition_variable changed; ///< for those who wait for it
    std::deque<Job> jobs;
    Ticket posted = 0;
    Ticket finished = 0;
    bool ending = false;
    bool stuck = false;
    bool ended = false;
};

void PatientThread::alone(Job job)
{
    Crew::shared().start(std::move(job));
}

int PatientThread::endProgram(int exitCode)
{
    if (!Crew::shared().joinAllWithin(LastFarewell)) {
        std::fflush(nullptr);
        std::_Exit(exitCode);
    }
    return exitCode;
}

PatientThread::PatientThread()
    : _state(std::make_shared<State>())
{
    Crew::shared().start([state = _state] { work(state); });
}

PatientThread::~PatientThread()
{
    std::unique_lock lock(_state->mutex);
    _state->ending = true;
    _state->hasWork.notify_one();
    if (!_state->stuck)
        _state->changed.wait_for(lock, Farewell, [this] { return _state->ended; });
}

bool PatientThread::run(Job job, std::chrono::milliseconds limit)
{
    return !isStuck() && wait(post(std::move(job)), limit);
}

PatientThread::Ticket PatientThread::post(Job job)
{
    Ticket ticket = 0;
    {
        const std::lock_guard lock(_state->mutex);
        _state->jobs.push_back(std::move(job));
        ticket = ++_state->posted;
    }
    _state->hasWork.notify_one();
    return ticket;
}

bool PatientThread::wait(Ticket ticket, std::chrono::milliseconds limit)
{
    std::unique_lock lock(_state->mutex);
    const auto isDone = [this, ticket] { return _state->finished >= ticket || _state->stuck; };
    if (!_state->changed.wait_for(lock, limit, isDone)) {
        _state->stuck = true;
        _state->changed.notify_all();
    }
    return _state->finished >= ticket;
}

bool PatientThread::isStuck() const
{
    const std::lock_guard lock(_state->mutex);
    return _state->stuck;
}

void PatientThread::work(const std::shared_ptr<State>& state)
{
    std::unique_lock lock(state->mutex);
    for (;;) {
        state->hasWork.wait(lock, [&] { return state->ending || !state->jobs.empty(); });
        if (state->jobs.empty())
            break;
        Job job = std::move(state->jobs.front());
        state->jobs.pop_front();
        lock.unlock();
        Fault::guard(job);
        job = {}; // what it owned ends here and not while the lock is held
        lock.lock();
        ++state->finished;
        state->changed.notify_all();
    }
    state->ended = true;
    state->changed.notify_all();
}
