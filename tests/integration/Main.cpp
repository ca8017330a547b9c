#include "support/TestProcess.h"

int main(int argc, char** argv) {
    return test_process::RunInRealTime(argc, argv);
}
