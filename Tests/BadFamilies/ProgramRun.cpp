#include "Tests/BadFamilies/ProgramRun.h"

#include "Tests/Support/FilesIn.h"

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Of waiting for nothing too, after which the program is stopped.
constexpr unsigned mostSeconds = 90;

void becomeProgram(std::vector<std::string>& arguments, std::string const& output, std::string const& errors)
{
    std::vector<char*> pointers;
    for (auto& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    for (auto const capability : { CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH }) {
        ::prctl(PR_CAPBSET_DROP, capability, 0, 0, 0); // Else a superuser's programs begin with them again.
    }
    ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::alarm(mostSeconds);
    ::execv(PROGRAM, pointers.data());
    ::_exit(127);
}

double secondsOf(timeval const& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

ProgramRun runProgram(std::vector<std::string> arguments, std::filesystem::path const& folder)
{
    arguments.insert(arguments.begin(), PROGRAM);
    auto const output = (folder / "output").string();
    auto const errors = (folder / "errors").string();
    auto const child = ::fork();
    if (child == 0) {
        becomeProgram(arguments, output, errors);
    }
    int status = 0;
    rusage use {};
    ::wait4(child, &status, 0, &use);
    ProgramRun run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.ending = WIFEXITED(status) ? "status " + std::to_string(run.status)
                                   : "signal " + std::to_string(WTERMSIG(status));
    run.output = contentOf(output);
    run.errors = contentOf(errors);
    run.seconds = secondsOf(use.ru_utime) + secondsOf(use.ru_stime);
    run.megabytes = static_cast<double>(use.ru_maxrss) / 1024;
    return run;
}

void obeyFileModes()
{
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    std::array<__user_cap_data_struct, 2> sets {};
    ::syscall(SYS_capget, &header, sets.data());
    sets[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
    ::syscall(SYS_capset, &header, sets.data());
}
