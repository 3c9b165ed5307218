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

// 1022, Graph Setting: 2400 to 2499.
#define editGridMin              2400
#define editGridMax              2401
#define editGridStep             2402
#define checkGridDisplay         2403
#define checkOnlyFile1           2404
#define groupOnlyFile1           2405
#define buttonGraphSettingClose  2406
#define firstColorRadio          2410  // then ten numbers a column, of which nine are used
#define firstColorSample         2450
#define colorColumnIds           10

// 1023, Analysis tools. A table's cell in line r and column c is its first cell + 13 r + c; then 2500 to 2549.
#define firstUpperCell      1379
#define firstLowerCell      1483
#define firstUpperHeader    1587
#define firstLowerHeader    1601
#define firstUpperCheck     1130
#define firstLowerCheck     1138
#define scrollUpperTable    1320
#define scrollLowerTable    1321
#define labelUpperSelect    1600
#define labelLowerSelect    1614
#define labelLowerFile      2500
#define checkSectorTime     2501
#define buttonTablePage     2502
#define buttonHarmonize     2503
#define buttonLafHistogram  2504
#define buttonDistribution  2505
#define buttonSimulation    2506
#define buttonCsvOutput     2507
#define buttonCourseReview  2508  // stays hidden
#define checkKeep           2509
#define buttonTableClose    2510

// 1025, Final Simulation.
#define editSimTire       1225
#define labelFrontTeeth   1620
#define labelRearTeeth    1621
#define labelLoggedRatio  1622
#define labelSimRatio     1623
#define arrowFrontUp      1629
#define arrowFrontDown    1630
#define arrowRearUp       1631
#define arrowRearDown     1632
#define labelLoggedTire   1633
#define listFrontTeeth    1669
#define listRearTeeth     1670

// 1024, percentage.
#define buttonDistClose  1068
#define editDistMin      1220
#define editDistMax      1221
#define editDistStep     1222
#define editDistFile1    1223
#define editDistFile2    1224
#define listDistChannel  1667
#define listDistLaps     1668

// 1027, [CSV] Load data selection: 2600 to 2699.
#define firstCsvList      2600  // one a row, 16 rows
#define firstCsvCaption   2620
#define checkCsvLapType   2640
#define progressCsvLoad   2641
#define editCsvNotes      2642

// 1028, The selection of items and range.
#define buttonCsvLaps   1072
#define buttonCsvRange  1073
#define checkCsvTime    1147
#define firstCsvColumn  1148  // Distance, then one by one to 1163
#define listCsvRate     1689
#define progressCsv     1693
