// What loading the parts of Qt that the library uses adds to that.

#include <QGuiApplication>
#include <QtGlobal>

int main()
{
    // Asks for something of each, so that the linker keeps both.
    return qVersion()[0] == '6' && !QGuiApplication::desktopSettingsAware() ? 1 : 0;
}
