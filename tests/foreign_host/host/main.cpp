#include "exports.h"

int main(int argumentCount, char** arguments) { return runForeignHost(argumentCount, arguments); }
