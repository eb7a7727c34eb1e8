#include "host/program.h"

int main(int argc, char** argv) { return host::Main(argc, argv); }
