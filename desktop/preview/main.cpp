#include "desktop/preview/Program.h"

int main(int argc, char** argv) {
    return corvane::desktop::RunPreview(argc, argv);
}
