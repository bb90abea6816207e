#include "app/CStartUp.h"

int main(int argc, char** argv) { return CStartUp::Run(argc, argv); }
