#include "ask/CAskProgram.h"

int main(int argc, char** argv) { return CAskProgram::Run(argc, argv); }
