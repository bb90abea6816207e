#include "app/CCommandLine.h"
#include "app/CStartUp.h"

int main(int argc, char** argv)
{
    if (const auto status = CCommandLine::Answer(argc, argv, stdout)) {
        return *status;
    }
    return CStartUp::Run(argc, argv);
}
