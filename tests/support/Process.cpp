// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace tests {

Process::Process(const std::vector<std::string>& words)
{
    std::array<int, 2> in{}, out{};
    if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    std::vector<std::string> copies = words;
    std::vector<char*> arguments;
    for (std::string& word : copies)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int failure =
        ::posix_spawn(&id_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);
    input_ = in[1];
    output_ = out[0];
    if (failure == 0) return;
    id_ = -1;
    Forget();
    throw std::runtime_error("cannot start " + words.at(0));
}

Process::Process(Process&& other) noexcept
    : id_(std::exchange(other.id_, -1)), input_(std::exchange(other.input_, -1)),
      output_(std::exchange(other.output_, -1)), status_(other.status_)
{
}

Process& Process::operator=(Process&& other) noexcept
{
    std::swap(id_, other.id_);
    std::swap(input_, other.input_);
    std::swap(output_, other.output_);
    std::swap(status_, other.status_);
    return *this;
}

Process::~Process()
{
    if (id_ > 0) Kill();
    Forget();
}

void Process::Forget()
{
    CloseInput();
    if (output_ >= 0) ::close(std::exchange(output_, -1));
}

std::string Process::Line()
{
    std::string line;
    char letter = 0;
    while (::read(output_, &letter, 1) == 1 && letter != '\n')
        line += letter;
    return line;
}

void Process::CloseInput()
{
    if (input_ >= 0) ::close(std::exchange(input_, -1));
}

void Process::Kill()
{
    ::kill(id_, SIGKILL);
    Wait();
}

int Process::Wait()
{
    if (id_ <= 0) return status_;
    int how = 0;
    ::waitpid(std::exchange(id_, -1), &how, 0);
    status_ = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    return status_;
}

bool Process::Runs()
{
    if (id_ <= 0) return false;
    int how = 0;
    if (::waitpid(id_, &how, WNOHANG) == 0) return true;
    id_ = -1;
    status_ = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    return false;
}

}  // namespace tests
