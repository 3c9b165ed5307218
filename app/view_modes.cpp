#include "app/view_modes.h"

#include "app/toolbar.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "settings/settings.h"

void ShowModeButtons() {
    CheckButton(buttonPosition, graphPositionOn != 0);
    CheckButton(buttonAfMap, afMapOn != 0);
    CheckButton(buttonPlay, realTimePlayOn != 0);
    CheckButton(buttonGraphs, !graphPositionOn && !afMapOn);
}

void ShowNormalGraphs() {
    afMapOn = graphPositionOn = realTimePlayOn = 0;
    rulerFade = 5;
    ShowModeButtons();
}

void ShowAfMap() {
    afMapOn = 1;
    graphPositionOn = realTimePlayOn = 0;
    afFade = 0;
    ShowModeButtons();
}

void ShowRealTimePlay() {
    playStamp = NowMs();
    AnimeMode = 1;
    graphPositionOn = afMapOn = 0;
    CheckButton(buttonAnime, true);
    ShowModeButtons();
}
