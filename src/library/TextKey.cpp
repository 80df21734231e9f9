#include "library/TextKey.h"

#include <QByteArray>
#include <QHashFunctions>
#include <cstring>

namespace TextKey {

size_t hash(QAnyStringView text) noexcept {
    // Texts that fit in Latin-1 are hashed as their bytes, others as their UTF-16 units: those
    // can never equal a Latin-1 text.
    return text.visit([](auto v) -> size_t {
        using V = decltype(v);
        if constexpr (std::is_same_v<V, QLatin1StringView>) {
            return qHashBits(v.data(), size_t(v.size()));
        } else if constexpr (std::is_same_v<V, QStringView>) {
            if (!QtPrivate::isLatin1(v)) return qHashBits(v.data(), size_t(v.size()) * 2);
            char stack[256] = {};
            QByteArray heap;
            char* bytes = stack;
            if (v.size() > qsizetype(sizeof stack)) {
                heap.resize(v.size());
                bytes = heap.data();
            }
            for (qsizetype i = 0; i < v.size(); ++i)
                bytes[i] = char(v[i].unicode());
            return qHashBits(bytes, size_t(v.size()));
        } else {
            const QString utf16 = v.toString();
            return hash(utf16);
        }
    });
}

QAnyStringView shown(QAnyStringView text) noexcept {
    return text.visit([](auto v) -> QAnyStringView {
        using V = decltype(v);
        if constexpr (std::is_same_v<V, QLatin1StringView>) {
            const void* nul = v.size() ? std::memchr(v.data(), 0, size_t(v.size())) : nullptr;
            return nul ? v.left(static_cast<const char*>(nul) - v.data()) : v;
        } else if constexpr (std::is_same_v<V, QStringView>) {
            const qsizetype nul = v.indexOf(QChar(0));
            return nul < 0 ? v : v.left(nul);
        } else {
            const void* nul = v.size() ? std::memchr(v.data(), 0, size_t(v.size())) : nullptr;
            return nul ? v.left(static_cast<const char*>(nul) -
                                reinterpret_cast<const char*>(v.data()))
                       : v;
        }
    });
}

} // namespace TextKey
