#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace vexplot::test {

// The exception of type E that `call` throws; empty, with a failed
// expectation, when it throws none.
template <class E>
std::optional<E> Caught(const std::function<void()>& call) {
    try {
        call();
    } catch (const E& e) {
        return e;
    }
    ADD_FAILURE() << "nothing thrown";
    return std::nullopt;
}

}  // namespace vexplot::test
