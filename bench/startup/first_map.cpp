// Time from exec to the first map of a program's main window, beside a bare Qt window started
// the same way, runs interleaved. The program keeps one data folder across its runs, as a
// returning user's start does (the first run, a first start, is in the figures only through the
// median); it is killed once its window maps.
//
//   first_map [--runs N] [--files N] [--template F] [--title T] program [args...]
//   first_map --bare            (the bare Qt window itself)
//
// --files N puts N copies of the song F (a short MP3 the engine can play: the first one plays
// at start) on the program's command line. --idle S waits S seconds after the map and reports
// the program's resident memory then (VmRSS, and its file-backed and anonymous parts).
#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

std::string windowName(xcb_connection_t* c, xcb_window_t w) {
    auto cookie = xcb_get_property(c, 0, w, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 256);
    xcb_get_property_reply_t* r = xcb_get_property_reply(c, cookie, nullptr);
    std::string name;
    if (r) {
        name.assign(static_cast<const char*>(xcb_get_property_value(r)),
                    size_t(xcb_get_property_value_length(r)));
        free(r);
    }
    return name;
}

struct Rss {
    double total = -1, file = -1, anon = -1; // MiB
};

Rss rssOf(pid_t pid) {
    Rss r;
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    while (std::getline(status, line)) {
        double* to = line.rfind("VmRSS:", 0) == 0     ? &r.total
                     : line.rfind("RssFile:", 0) == 0 ? &r.file
                     : line.rfind("RssAnon:", 0) == 0 ? &r.anon
                                                      : nullptr;
        if (to) *to = atof(line.c_str() + line.find(':') + 1) / 1024.0;
    }
    return r;
}

// Seconds from fork to the map of a top-level window named `title`; -1 when none within 60 s.
// With idleSeconds > 0, `rss` gets the program's memory that long after the map.
double timeToMap(xcb_connection_t* c, const std::vector<std::string>& argv,
                 const std::string& title, const std::string& home, const std::string& cwd,
                 double idleSeconds = 0, Rss* rss = nullptr) {
    std::vector<char*> args;
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    const auto start = Clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        setenv("VELDOR_HOME", home.c_str(), 1);
        if (!cwd.empty() && chdir(cwd.c_str()) != 0) _exit(127);
        execv(args[0], args.data());
        _exit(127);
    }
    double seconds = -1;
    while (seconds < 0 && Clock::now() - start < std::chrono::seconds(60)) {
        xcb_generic_event_t* e = xcb_poll_for_event(c);
        if (!e) {
            int status;
            if (waitpid(pid, &status, WNOHANG) == pid) return -1;
            usleep(200);
            continue;
        }
        if ((e->response_type & 0x7f) == XCB_MAP_NOTIFY) {
            const auto* m = reinterpret_cast<xcb_map_notify_event_t*>(e);
            if (windowName(c, m->window) == title)
                seconds = std::chrono::duration<double>(Clock::now() - start).count();
        }
        free(e);
    }
    if (seconds >= 0 && idleSeconds > 0 && rss) {
        usleep(useconds_t(idleSeconds * 1e6));
        *rss = rssOf(pid);
    }
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    return seconds;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? -1 : v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && !strcmp(argv[1], "--bare")) {
        QApplication app(argc, argv);
        QWidget w;
        w.setWindowTitle(QStringLiteral("bare"));
        w.resize(400, 300);
        w.show();
        return app.exec();
    }
    int runs = 9, files = 0, i = 1;
    double idle = 0;
    std::string title = "VELDOR", templ;
    for (; i + 1 < argc && !strncmp(argv[i], "--", 2); i += 2) {
        if (!strcmp(argv[i], "--runs")) runs = atoi(argv[i + 1]);
        if (!strcmp(argv[i], "--files")) files = atoi(argv[i + 1]);
        if (!strcmp(argv[i], "--title")) title = argv[i + 1];
        if (!strcmp(argv[i], "--template")) templ = argv[i + 1];
        if (!strcmp(argv[i], "--idle")) idle = atof(argv[i + 1]);
    }
    if (i >= argc) {
        fprintf(stderr, "usage: first_map [--runs N] [--files N] [--template F] [--idle S] "
                        "[--title T] program [args...]\n");
        return 2;
    }
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c)) {
        fprintf(stderr, "first_map: no X display\n");
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(c, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(c);

    // Room for a long command line.
    rlimit stack{256 << 20, 256 << 20};
    setrlimit(RLIMIT_STACK, &stack);
    char base[] = "/tmp/first_map.XXXXXX";
    const std::string dir = mkdtemp(base);
    std::vector<std::string> program(argv + i, argv + argc);
    std::string cwd;
    if (files > 0) {
        cwd = dir + "/music";
        mkdir(cwd.c_str(), 0700);
        std::string bytes;
        if (FILE* t = fopen(templ.c_str(), "rb")) {
            char buffer[65536];
            size_t got;
            while ((got = fread(buffer, 1, sizeof buffer, t)) > 0)
                bytes.append(buffer, got);
            fclose(t);
        }
        if (bytes.empty()) {
            fprintf(stderr, "first_map: --files needs --template with a song\n");
            return 2;
        }
        for (int n = 0; n < files; ++n) {
            char name[32];
            snprintf(name, sizeof name, "%05d.mp3", n);
            FILE* f = fopen((cwd + "/" + name).c_str(), "wb");
            if (f) {
                fwrite(bytes.data(), 1, bytes.size(), f);
                fclose(f);
            }
            program.push_back(name);
        }
    }
    char self[4096];
    const ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    self[n > 0 ? n : 0] = 0;
    const std::vector<std::string> bare = {self, "--bare"};

    std::vector<double> tBare, tProgram, rssTotal, rssFile, rssAnon, rssBare;
    for (int r = 0; r < runs; ++r) {
        const std::string home = dir + "/home";
        mkdir(home.c_str(), 0700);
        Rss rss, bareRss;
        tBare.push_back(timeToMap(c, bare, "bare", home, {}, idle, &bareRss));
        tProgram.push_back(timeToMap(c, program, title, home, cwd, idle, &rss));
        rssBare.push_back(bareRss.total);
        rssTotal.push_back(rss.total);
        rssFile.push_back(rss.file);
        rssAnon.push_back(rss.anon);
    }
    printf("bare Qt window: median %.3f s\n", median(tBare));
    printf("%s (%d files): median %.3f s (%.1fx the bare window)\n", program[0].c_str(), files,
           median(tProgram), median(tProgram) / median(tBare));
    if (idle > 0)
        printf("resident %.0f s after the map: median %.1f MiB (file-backed %.1f, anonymous %.1f);"
               " bare Qt window %.1f MiB\n",
               idle, median(rssTotal), median(rssFile), median(rssAnon), median(rssBare));
    std::string cleanup = "rm -rf '" + dir + "'";
    return system(cleanup.c_str()) == 0 ? 0 : 1;
}
