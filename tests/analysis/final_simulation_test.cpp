#include "analysis/final_simulation.h"

#include <gtest/gtest.h>

#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "run_data/run_events.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

namespace {

struct FinalSimulation : testing::Test {
    void SetUp() override {
        LoadDefaults();
        Log(15, 43, 2010);
    }
    static void Log(int front, int rear, int tyreMm) {
        frontSprocket[0] = front;
        rearSprocket[0] = rear;
        rearTyreMm[0] = tyreMm;
    }
    static std::string Ratio(void (*write)(char*)) {
        char text[ratioTextSize];
        write(text);
        return text;
    }
    static void ExpectTeeth(int front, int rear) {
        EXPECT_EQ(frontSprocket[0], front);
        EXPECT_EQ(rearSprocket[0], rear);
    }
    static void ExpectSimulated(int front, int rear) {
        EXPECT_EQ(simFront, front);
        EXPECT_EQ(simRear, rear);
    }
};

TEST_F(FinalSimulation, StartsAsTheStandardBikeAndWithoutAFactor) {
    ExpectSimulated(15, 43);
    EXPECT_EQ(simTireLength, 2010);
    EXPECT_EQ(neFactor[0], 1.0f);
}

TEST_F(FinalSimulation, OpeningComputesNoFactor) {
    simFront = 16;
    OpenFinalSimulation();
    EXPECT_EQ(neFactor[0], 1.0f);
    EXPECT_EQ(Ratio(LoggedRatioText), "2.867");
    EXPECT_EQ(Ratio(SimulatedRatioText), "2.688");
}

TEST_F(FinalSimulation, OneToothMoreInFrontWithAnEqualTyreIsTheRatioOfTheRatios) {
    ChooseTeeth(TeethList::front, 16 - frontTeethFirst);
    EXPECT_FLOAT_EQ(neFactor[0], 0.9375f);
    ExpectSimulated(16, 43);
}

TEST_F(FinalSimulation, FactorIsTheWholeFormulaInFloat) {
    Log(17, 41, 1987);
    ChooseTeeth(TeethList::rear, 47 - rearTeethFirst);
    LeaveTireLength("2113");
    const float wanted = (47.0f / 15.0f) / (41.0f / 17.0f) * (1987.0f / 2113.0f);
    EXPECT_EQ(neFactor[0], wanted);
}

TEST_F(FinalSimulation, OnlyTheFactorOfFile1Changes) {
    ChooseTeeth(TeethList::front, 0);
    EXPECT_NE(neFactor[0], 1.0f);
    EXPECT_EQ(neFactor[1], 1.0f);
    EXPECT_EQ(neFactor[2], 1.0f);
}

TEST_F(FinalSimulation, ItemsAreCountedFromTheFirstTeethOfEachList) {
    simFront = 13;
    simRear = 70;
    EXPECT_EQ(TeethItem(TeethList::front), 0);
    EXPECT_EQ(TeethItem(TeethList::rear), 40);
    simFront = 23;
    simRear = 29;
    EXPECT_EQ(TeethItem(TeethList::front), -1);
    EXPECT_EQ(TeethItem(TeethList::rear), -1);
}

TEST_F(FinalSimulation, AListWithoutASelectionKeepsTheTeeth) {
    ChooseTeeth(TeethList::front, -1);
    ExpectSimulated(15, 43);
    ChooseTeeth(TeethList::rear, 1000);
    ExpectSimulated(15, rearTeethLast);
}

TEST_F(FinalSimulation, ALogWithoutSprocketDataSimulatesAsOneToOne) {
    struct Case { int front, rear; };
    for (const Case& c : {Case{9, 43}, Case{15, 9}, Case{0, 0}, Case{-3, 40}}) {
        SCOPED_TRACE(c.front);
        Log(c.front, c.rear, 2010);
        simFront = 15;
        simRear = 43;
        OpenFinalSimulation();
        ExpectTeeth(1, 1);
        ExpectSimulated(15, 43);
        ChooseTeeth(TeethList::front, 3);
        ExpectTeeth(1, 1);
        ExpectSimulated(1, 1);
        EXPECT_EQ(neFactor[0], 1.0f);
    }
}

TEST_F(FinalSimulation, SimulatedTeethBelowOneBecomeOneToOneAtTheStartAndAtAChange) {
    simFront = 0;
    OpenFinalSimulation();
    ExpectSimulated(1, 1);
    simRear = -4;
    ChooseTeeth(TeethList::front, 0);
    ExpectSimulated(1, 1);
}

TEST_F(FinalSimulation, TyreLengthIsHeldFrom10To3000) {
    struct Case { const char* typed; int kept; };
    for (const Case& c : {Case{"9", 10}, Case{"10", 10}, Case{"3000", 3000}, Case{"3001", 3000}, Case{"", 10}, Case{"-7", 10},
                          Case{"99999999999999999999", 3000}, Case{"1999.9 mm", 1999}}) {
        SCOPED_TRACE(c.typed);
        LeaveTireLength(c.typed);
        EXPECT_EQ(simTireLength, c.kept);
    }
}

TEST_F(FinalSimulation, ATyreOf5CountsAs10) {
    LeaveTireLength("5");
    EXPECT_EQ(simTireLength, 10);
    EXPECT_EQ(neFactor[0], 201.0f);
}

TEST_F(FinalSimulation, ResetIsTheLogAndAFactorOfExactlyOne) {
    ChooseTeeth(TeethList::front, 0);
    LeaveTireLength("1800");
    Log(16, 44, 1950);
    ResetFinalSimulation();
    EXPECT_EQ(neFactor[0], 1.0f);
    ExpectSimulated(16, 44);
    EXPECT_EQ(simTireLength, 1950);
    EXPECT_EQ(Ratio(LoggedRatioText), Ratio(SimulatedRatioText));
}

TEST_F(FinalSimulation, ResetOfALogWithoutSprocketDataIsOneToOne) {
    Log(9, 44, 1950);
    ResetFinalSimulation();
    ExpectTeeth(1, 1);
    ExpectSimulated(1, 1);
}

TEST_F(FinalSimulation, WithoutATyreLengthTheFactorStays) {
    Log(15, 43, 0);
    ResetFinalSimulation();
    neFactor[0] = 1.25f;
    ChooseTeeth(TeethList::front, 0);
    EXPECT_EQ(neFactor[0], 1.25f);
}

TEST_F(FinalSimulation, ArrowsDoNothingWithoutOneOfTheTwoSettings) {
    for (TeethArrow arrow : {TeethArrow::frontUp, TeethArrow::frontDown, TeethArrow::rearUp, TeethArrow::rearDown})
        StepLoggedTeeth(arrow);
    ExpectTeeth(15, 43);
    Finalchg = 1;
    StepLoggedTeeth(TeethArrow::frontUp);
    Finalchg = 0;
    Debug = 1;
    StepLoggedTeeth(TeethArrow::frontUp);
    ExpectTeeth(17, 43);
}

TEST_F(FinalSimulation, ArrowsWrapAtTheirLimits) {
    Finalchg = 1;
    struct Case { TeethArrow arrow; int* teeth; int from, to; };
    for (const Case& c : {Case{TeethArrow::frontUp, frontSprocket, 21, 22}, Case{TeethArrow::frontUp, frontSprocket, 22, 13},
                          Case{TeethArrow::frontDown, frontSprocket, 14, 13}, Case{TeethArrow::frontDown, frontSprocket, 13, 22},
                          Case{TeethArrow::rearUp, rearSprocket, 59, 60}, Case{TeethArrow::rearUp, rearSprocket, 60, 30},
                          Case{TeethArrow::rearDown, rearSprocket, 34, 33}, Case{TeethArrow::rearDown, rearSprocket, 33, 60},
                          Case{TeethArrow::rearDown, rearSprocket, 32, 60}}) {
        SCOPED_TRACE(c.from);
        c.teeth[0] = c.from;
        StepLoggedTeeth(c.arrow);
        EXPECT_EQ(c.teeth[0], c.to);
    }
}

TEST_F(FinalSimulation, AnArrowCountsFromTheNextChangeOn) {
    Finalchg = 1;
    StepLoggedTeeth(TeethArrow::frontUp);
    EXPECT_EQ(neFactor[0], 1.0f);
    ChooseTeeth(TeethList::front, 15 - frontTeethFirst);
    EXPECT_FLOAT_EQ(neFactor[0], 16.0f / 15.0f);
}

TEST_F(FinalSimulation, ALoadIntoFile1TakesItsTeethAndTyreAndOtherFilesLeaveThem) {
    ChooseTeeth(TeethList::front, 0);
    Log(14, 40, 1900);
    AfterLoad(1, LoadResult::loaded);
    EXPECT_EQ(simFront, 13);
    EXPECT_NE(neFactor[0], 1.0f);
    AfterLoad(0, LoadResult::loaded);
    ExpectSimulated(14, 40);
    EXPECT_EQ(simTireLength, 1900);
    EXPECT_EQ(neFactor[0], 1.0f);
}

}  // namespace
