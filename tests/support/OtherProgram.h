#pragma once

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

/// A program in a process of its own, which does what it is told, one thing after the other. It must be made
/// before the process that makes it has opened a database.
class OtherProgram {
public:
    /// Does what a text says; the result goes back.
    using Perform = std::function<std::string(const std::string&)>;

    explicit OtherProgram(const Perform& perform)
    {
        int orders[2], replies[2];
        if (::pipe2(orders, O_CLOEXEC) != 0 || ::pipe2(replies, O_CLOEXEC) != 0)
            return;
        ::signal(SIGPIPE, SIG_IGN); // it may have died
        std::fflush(nullptr);
        m_process = ::fork();
        if (m_process == 0) {
            ::close(orders[1]);
            ::close(replies[0]);
            for (std::string order; receive(orders[0], order);)
                send(replies[1], perform(order));
            ::_exit(0);
        }
        ::close(orders[0]);
        ::close(replies[1]);
        m_orders = orders[1];
        m_replies = replies[0];
    }
    /// Ends it as it stands: nothing is closed.
    ~OtherProgram()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::close(m_orders);
        ::close(m_replies);
        ::waitpid(m_process, nullptr, 0);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// What it answers; "dead" when it is. A child of the process that made it may ask, too.
    std::string ask(const std::string& order) const
    {
        std::string reply;
        return send(m_orders, order) && receive(m_replies, reply) ? reply : "dead";
    }

private:
    static bool all(ssize_t (*move)(int, char*, std::size_t), int handle, char* data, std::size_t size)
    {
        for (std::size_t done = 0; done < size;) {
            const ssize_t moved = move(handle, data + done, size - done);
            if (moved <= 0)
                return false;
            done += static_cast<std::size_t>(moved);
        }
        return true;
    }
    static bool send(int handle, std::string text)
    {
        const auto write = [](int to, char* data, std::size_t size) { return ::write(to, data, size); };
        auto size = static_cast<std::uint32_t>(text.size());
        return all(write, handle, reinterpret_cast<char*>(&size), sizeof size) &&
               all(write, handle, text.data(), text.size());
    }
    static bool receive(int handle, std::string& text)
    {
        const auto read = [](int from, char* data, std::size_t size) { return ::read(from, data, size); };
        std::uint32_t size = 0;
        if (!all(read, handle, reinterpret_cast<char*>(&size), sizeof size))
            return false;
        text.resize(size);
        return all(read, handle, text.data(), size);
    }

    pid_t m_process = 0;
    int m_orders = -1, m_replies = -1;
};
