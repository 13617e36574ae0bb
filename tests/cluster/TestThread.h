// A thread of a test: it ends with its object, and what it throws fails the test instead of ending
// the program.
//
// Thread safety: start threads from the thread of the test.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_TESTTHREAD_H
#define EVENTSYSTEM_TESTS_CLUSTER_TESTTHREAD_H

#include <gtest/gtest.h>

#include <exception>
#include <stop_token>
#include <thread>
#include <utility>

namespace EventSystemTest {

// `work` is called with the std::stop_token of the thread.
template <class Work>
std::jthread testThread(Work work) {
  return std::jthread([work = std::move(work)](const std::stop_token& stop) {
    try {
      work(stop);
    } catch (const std::exception& failure) {
      ADD_FAILURE() << "a thread of the test has ended: " << failure.what();
    }
  });
}

}  // namespace EventSystemTest

#endif
