#include "desktop/application/Program.h"

int main(int argc, char** argv) {
    return corvane::desktop::RunDesktop(argc, argv);
}
