// The linker sends the starts of the program's own threads here instead of to the library of C++.

#include "fault/Faults.h"

#include <system_error>
#include <thread>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
// std::thread::_M_start_thread(std::unique_ptr<_State>, void (*)()), as it is called.
void __real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    std::thread* thread, void* state, void (*depend)());
void __wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    std::thread* thread, void* state, void (*depend)());

void __wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    std::thread* thread, void* state, void (*depend)())
{
    if (Fault::strikes(Fault::Place::ThreadStart))
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    __real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
        thread, state, depend);
}
}
// NOLINTEND(bugprone-reserved-identifier)
