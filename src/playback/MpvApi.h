#pragma once
#include <functional>
#include <mpv/client.h>

// libmpv, opened when the first engine starts rather than linked: its library tree costs more
// than the rest of start-up together, and the window comes first.
struct MpvApi {
    decltype(&::mpv_create) create;
    decltype(&::mpv_initialize) initialize;
    decltype(&::mpv_terminate_destroy) terminate_destroy;
    decltype(&::mpv_set_option_string) set_option_string;
    decltype(&::mpv_command) command;
    decltype(&::mpv_command_ret) command_ret;
    decltype(&::mpv_free) free;
    decltype(&::mpv_free_node_contents) free_node_contents;
    decltype(&::mpv_get_property) get_property;
    decltype(&::mpv_get_property_string) get_property_string;
    decltype(&::mpv_set_property) set_property;
    decltype(&::mpv_set_property_string) set_property_string;
    decltype(&::mpv_wait_event) wait_event;
    decltype(&::mpv_request_log_messages) request_log_messages;
    decltype(&::mpv_set_wakeup_callback) set_wakeup_callback;
};

// Opens libmpv once (any thread; a second caller waits for the first); nullptr when it cannot be
// opened or lacks a function.
const MpvApi* mpv_Library();

// Opens it on a thread of its own, so that a later mpv_Library finds it ready; `ready` then runs
// on `context`'s thread (`context` must live as long as the process).
class QObject;
void mpv_PreloadLibrary(QObject* context = nullptr, std::function<void()> ready = {});
