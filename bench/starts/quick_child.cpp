// A program that ends at once, or after the seconds that its first argument gives.

#include <cstdlib>
#include <unistd.h>

int main(int argc, char **argv) {
    const int seconds = argc > 1 ? atoi(argv[1]) : 0;
    if (seconds > 0) {
        sleep(static_cast<unsigned>(seconds));
    }
    return 0;
}
