// power.cpp -- how the loop lives through a suspended machine and a changed display.
#include "app/frame_loop.h"
#include "app/toolbar.h"
#include "draw/draw_layer.h"
#include "platform/window.h"
#include "settings/settings.h"

// The window's place, so that it survives a machine that does not come back.
static void StoreWindowPlace() {
    ShowMainWindow(0);
    GetClientSize(&windowWidth, &windowHeight);
    GetWindowPos(&windowX, &windowY);
}

void PowerBroadcast(PowerEvent event) {
    switch (event) {
        case PowerEvent::suspendQuery:
            StoreWindowPlace();
            powerState = 1;
            break;
        case PowerEvent::suspend:
            zoomed = MainWindowMaximised();
            StoreWindowPlace();
            powerState = 2;
            break;
        case PowerEvent::resume:
            if (powerState == 1 || powerState == 2) powerState = 3;
            break;
    }
}

void ActOnPowerState() {
    switch (powerState) {
        case 1:
            WaitMs(50);
            if (powerState == 1) powerState = 2;  // the wait serves messages: a resume may have come
            break;
        case 2:
            WaitMs(50);
            break;
        case 3:
            RebuildResources();
            powerState = 0;
            break;
    }
}

void DisplayChanged() {
    RebuildResources();
    PlaceToolbar(0);
}
