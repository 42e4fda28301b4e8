#include "Platform/PatientThread.h"

#include "Base/Fault.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <mutex>
#include <thread>

namespace
{
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
