#include "tool/RunProgram.h"

int main(int argc, char** argv) { return Zorv::Tool::runProgram(argc, argv); }
