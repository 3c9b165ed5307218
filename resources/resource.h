// resource.h -- every id of the program's resources, for the resource compiler and the code alike, hence macros.
// Ids never change once given: settings and tests know them. Ids from 2000 up are free, grouped by dialog.
#pragma once

// Icons.
#define iconProgram     1000
#define iconMoveFile1   1001
#define iconMoveFile2   1002
#define iconOpenFile1   1003
#define iconOpenFile2   1004
#define iconLayout      1005
#define iconCloseFile2  1006
#define iconPosition    1007
#define iconGraphs      1008
#define iconAnimation   1009
#define iconPlay        1010
#define iconAfMap       1011
#define iconSetup       1012
#define iconMoveFile3   1014
#define iconOpenFile3   1015

// Dialogs.
#define dialogToolbar          1018
#define dialogSetup            1019
#define dialogCorrectiveTools  1020
#define dialogGearBox          1021
#define dialogGraphSetting     1022
#define dialogAnalysisTools    1023
#define dialogDistribution     1024
#define dialogFinalSimulation  1025
#define dialogAuxCalculation   1026
#define dialogCsvImport        1027
#define dialogCsvRange         1028
#define dialogRealTimeMonitor  1029
#define dialogFileLoadSetting  1030
#define dialogExtendControl    1031
#define dialogAfMapSetting     1032

// 1018, the tool bar.
#define buttonOpen1      1033
#define buttonOpen2      1034
#define buttonLayout     1035
#define buttonClose2     1036
#define buttonSetup      1037
#define buttonMoveFile1  1111
#define buttonMoveFile2  1112
#define buttonPosition   1113
#define buttonGraphs     1114
#define buttonAnime      1115
#define buttonPlay       1116
#define buttonAfMap      1117
