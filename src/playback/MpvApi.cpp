#include "playback/MpvApi.h"

#include <QMetaObject>
#include <QObject>
#include <cstdio>
#include <dlfcn.h>
#include <mutex>
#include <thread>

namespace {

std::once_flag g_once;
MpvApi g_api{};
bool g_ok = false;

template <typename Fn> bool resolve(void* lib, const char* name, Fn& fn) {
    fn = reinterpret_cast<Fn>(::dlsym(lib, name));
    return fn != nullptr;
}

void open() {
    void* lib = nullptr;
    for (const char* name : {"libmpv.so.2", "libmpv.so.1", "libmpv.so"})
        if ((lib = ::dlopen(name, RTLD_NOW | RTLD_LOCAL))) break;
    if (!lib) {
        std::fprintf(stderr, "veldor: the media engine cannot be opened: %s\n", ::dlerror());
        return;
    }
    MpvApi& a = g_api;
    g_ok = resolve(lib, "mpv_create", a.create) && resolve(lib, "mpv_initialize", a.initialize) &&
           resolve(lib, "mpv_terminate_destroy", a.terminate_destroy) &&
           resolve(lib, "mpv_set_option_string", a.set_option_string) &&
           resolve(lib, "mpv_command", a.command) &&
           resolve(lib, "mpv_command_ret", a.command_ret) && resolve(lib, "mpv_free", a.free) &&
           resolve(lib, "mpv_free_node_contents", a.free_node_contents) &&
           resolve(lib, "mpv_get_property", a.get_property) &&
           resolve(lib, "mpv_get_property_string", a.get_property_string) &&
           resolve(lib, "mpv_set_property", a.set_property) &&
           resolve(lib, "mpv_set_property_string", a.set_property_string) &&
           resolve(lib, "mpv_wait_event", a.wait_event) &&
           resolve(lib, "mpv_request_log_messages", a.request_log_messages) &&
           resolve(lib, "mpv_set_wakeup_callback", a.set_wakeup_callback);
}

} // namespace

const MpvApi* mpv_Library() {
    std::call_once(g_once, open);
    return g_ok ? &g_api : nullptr;
}

void mpv_PreloadLibrary(QObject* context, std::function<void()> ready) {
    std::thread([target = context, ready = std::move(ready)] {
        mpv_Library();
        if (target && ready) QMetaObject::invokeMethod(target, ready, Qt::QueuedConnection);
    }).detach();
}
