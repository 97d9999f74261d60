#include "Platform/Ports/RunningQueue.h"

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/FatalError.h"

#include <string>
#include <utility>

namespace vantix {

namespace {

thread_local const void* runningIdentity = nullptr;
thread_local std::string_view runningLabel = "no queue";

}  // namespace

RunningQueue::RunningQueue(const void* identity, std::string_view label)
    : outerIdentity_(std::exchange(runningIdentity, identity)), outerLabel_(std::exchange(runningLabel, label)) {}

RunningQueue::~RunningQueue() {
    runningIdentity = outerIdentity_;
    runningLabel = outerLabel_;
}

bool RunningQueue::is(const void* identity) { return runningIdentity == identity; }

std::string_view RunningQueue::label() { return runningLabel; }

void RunningQueue::setThreadLabel(std::string_view label) { runningLabel = label; }

void assertOnQueue(const DispatchQueue& queue, std::string_view operation) {
    if (queue.isCurrent()) return;
    fatalError(std::string(operation) + " belongs to the queue " + std::string(queue.label()) + " and was called on " +
               std::string(RunningQueue::label()));
}

void assertNotOnQueue(const DispatchQueue& queue, std::string_view operation) {
    if (!queue.isCurrent()) return;
    fatalError(std::string(operation) + " must not be called on the queue " + std::string(queue.label()));
}

}  // namespace vantix
