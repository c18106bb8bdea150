#include "WindowServerSimulator/WindowServerSimulator.hpp"

#include "WindowServerSimulator/SimulatorState.hpp"

namespace screenweaver::simulation {

WindowServerSimulator::WindowServerSimulator(const Clock& clock)
    : state_(std::make_unique<SimulatorState>(clock)) {}

WindowServerSimulator::~WindowServerSimulator() = default;

platform::PlatformAPI WindowServerSimulator::platform() const {
    return state_->platform();
}

void WindowServerSimulator::setProcessFacts(platform::ProcessFacts facts) {
    state_->setProcessFacts(facts);
}

void WindowServerSimulator::addDisplay(SimulatedDisplay display) {
    state_->addDisplay(std::move(display));
}

void WindowServerSimulator::removeDisplay(CGDirectDisplayID displayID) {
    state_->removeDisplay(displayID);
}

void WindowServerSimulator::addDisplayLater(SimulatedDisplay display, Clock::Duration delay) {
    state_->addDisplayLater(std::move(display), delay);
}

void WindowServerSimulator::removeDisplayLater(CGDirectDisplayID displayID, Clock::Duration delay) {
    state_->removeDisplayLater(displayID, delay);
}

void WindowServerSimulator::moveDisplay(CGDirectDisplayID displayID, CGPoint origin) {
    state_->moveDisplay(displayID, origin);
}

void WindowServerSimulator::setCurrentMode(CGDirectDisplayID displayID, std::size_t modeIndex) {
    state_->setCurrentMode(displayID, modeIndex);
}

void WindowServerSimulator::setMirrorSource(CGDirectDisplayID displayID, CGDirectDisplayID source) {
    state_->setMirrorSource(displayID, source);
}

void WindowServerSimulator::editDisplayQuietly(CGDirectDisplayID displayID,
                                               const std::function<void(SimulatedDisplay&)>& edit) {
    state_->editDisplayQuietly(displayID, edit);
}

std::optional<SimulatedDisplay> WindowServerSimulator::display(CGDirectDisplayID displayID) const {
    return state_->display(displayID);
}

std::vector<CGDirectDisplayID> WindowServerSimulator::activeDisplayIDs() const {
    return state_->activeDisplayIDs();
}

void WindowServerSimulator::failCalls(std::string_view function, Failure failure) {
    state_->failCalls(function, failure);
}

void WindowServerSimulator::clearFailures() {
    state_->clearFailures();
}

void WindowServerSimulator::waitForCallbacks() {
    state_->waitForCallbacks();
}

std::size_t WindowServerSimulator::registeredCallbackCount() const {
    return state_->registeredCallbackCount();
}

void WindowServerSimulator::removeClass(std::string_view className) {
    state_->removeClass(className);
}

void WindowServerSimulator::removeSelector(std::string_view className, std::string_view selector) {
    state_->removeSelector(className, selector);
}

void WindowServerSimulator::setVirtualDisplayScript(VirtualDisplayScript script) {
    state_->setVirtualDisplayScript(std::move(script));
}

std::vector<VirtualDisplayRecord> WindowServerSimulator::virtualDisplays() const {
    return state_->virtualDisplays();
}

std::size_t WindowServerSimulator::descriptorAttempts() const {
    return state_->descriptorAttempts();
}

std::vector<std::string> WindowServerSimulator::calls() const {
    return state_->calls(std::nullopt);
}

std::vector<std::string> WindowServerSimulator::calls(CallFamily family) const {
    return state_->calls(family);
}

void WindowServerSimulator::clearCalls() {
    state_->clearCalls();
}

std::vector<std::string> WindowServerSimulator::hygieneProblems() const {
    return state_->hygieneProblems();
}

}  // namespace screenweaver::simulation
