#include "annotations/MarkerLetters.h"

#include <mutex>

namespace vexplot {

namespace {

std::mutex& LettersMutex() {
    static std::mutex mutex;
    return mutex;
}

int& LetterCounter() {
    static int counter = 0;
    return counter;
}

}  // namespace

std::string MarkerLetters::Next() {
    const std::lock_guard lock(LettersMutex());
    int& counter = LetterCounter();
    const std::string name(1, static_cast<char>('A' + counter));
    counter = counter < 26 ? counter + 1 : 0;
    return name;
}

void MarkerLetters::Reset() {
    const std::lock_guard lock(LettersMutex());
    LetterCounter() = 0;
}

}  // namespace vexplot
