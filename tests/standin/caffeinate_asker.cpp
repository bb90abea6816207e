// Asks for the keep-awake as the program does, then stays until it is killed:
//
//   caffeinate_asker shell|direct pipe|null SECONDS
//
// "shell" hands the command line to a shell's standard input, "direct" runs the
// command itself. The output of what is started leads back here with "pipe". A
// line on the standard input closes this end of it.

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

static void RunChild(bool bShell, const char* pSeconds, int nInput, int nOutput)
{
    dup2(nInput, STDIN_FILENO);
    dup2(nOutput, STDOUT_FILENO);
    if (bShell) {
        execlp("bash", "bash", nullptr);
    } else {
        execlp("caffeinate", "caffeinate", "-u", "-t", pSeconds, nullptr);
    }
    _exit(127);
}

int main(int argc, char* argv[])
{
    if (argc != 4) {
        return 2;
    }
    const bool bShell = std::strcmp(argv[1], "shell") == 0;
    int input[2] = {-1, -1};
    int output[2] = {-1, open("/dev/null", O_WRONLY | O_CLOEXEC)};
    if (pipe2(input, O_CLOEXEC) != 0
        || (std::strcmp(argv[2], "pipe") == 0 && pipe2(output, O_CLOEXEC) != 0)) {
        return 2;
    }
    if (fork() == 0) {
        RunChild(bShell, argv[3], input[0], output[1]);
    }
    close(input[0]);
    close(output[1]);
    const std::string strLine = std::string("caffeinate -u -t ") + argv[3] + "  \n";
    const bool bWritten
        = !bShell || write(input[1], strLine.data(), strLine.size()) == ssize_t(strLine.size());
    close(input[1]);
    char chGo = 0;
    if (bWritten && read(STDIN_FILENO, &chGo, 1) == 1) {
        close(output[0]);
    }
    for (;;) {
        pause();
    }
}
