// The application object that graphs, being widgets, need. It opens no window: the offscreen platform is used
// (on Windows the usual one) unless the environment names another one. At most one exists at a time; graphs
// must not outlive it.
#pragma once

#include <QApplication>

namespace lumoplot {

class TOffscreenApplication {
public:
    TOffscreenApplication();

private:
    /// Chooses the platform before the application object starts it.
    struct TPlatformChoice {
        TPlatformChoice();
    };

    int m_argumentCount = 1;
    char m_programName[7] = "xydata";
    char* m_arguments[2] = {m_programName, nullptr};
    TPlatformChoice m_choice;
    QApplication m_application;
};

} // namespace lumoplot
