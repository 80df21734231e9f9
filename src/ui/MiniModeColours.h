#pragma once
#include <QString>
#include <array>

// The nine colours of the Mini-Mode window, section "MiniModeAppearance", as COLORREF values.
struct MiniModeColours {
    enum Key {
        BackColour,
        BorderColour,
        LightLinesColour,
        DarkLinesColour,
        SlidersBackColour,
        IndentBackColour,
        IndentFontColour,
        WindowFontColour,
        WindowFontBackColour,
        Count
    };
    std::array<qint64, Count> colour;

    static QString keyName(int key);
    // The window's own colours, a new user's look.
    static MiniModeColours defaults();
    // Each key read with its default; nonsense takes the default.
    static MiniModeColours read();
    void write() const;
};
