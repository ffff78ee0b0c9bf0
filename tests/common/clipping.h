// Whether a window shows all of its texts.
#pragma once

#include <QFont>
#include <QTranslator>
#include <QWidget>
#include <functional>

namespace lumoplot {

/// Every visible label, button, group title and table header of the window has room for its text, and lies
/// inside what holds it. Labels that are cut on purpose (Ignored width) are left out.
void ExpectNothingClipped(QWidget& window);

/// Lets the application's texts be larger for a while, as a desktop with larger text does.
class TTextScale {
public:
    explicit TTextScale(double factor);
    ~TTextScale();
    TTextScale(const TTextScale&) = delete;
    TTextScale& operator=(const TTextScale&) = delete;

private:
    QFont m_before;
};

/// Lets windows that are made meanwhile speak German; false where that was not built.
class TGerman {
public:
    TGerman();
    ~TGerman();
    TGerman(const TGerman&) = delete;
    TGerman& operator=(const TGerman&) = delete;
    bool IsThere() const { return m_isThere; }

private:
    QTranslator m_translator;
    bool m_isThere;
};

/// Runs `check` with the usual texts, with texts of one and a half times the size, and in German.
void InEveryDress(const std::function<void()>& check);

} // namespace lumoplot
