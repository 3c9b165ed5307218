#include "tools/sample_log/ride.h"

#include <algorithm>
#include <cmath>

#include "tools/sample_log/pace.h"
#include "tools/sample_log/sensors.h"

namespace {

constexpr double step = 1.0 / samplesPerSecond;  // s
constexpr double gravity = 9.81, mass = 255;     // m/s2; kg with rider and fuel
constexpr double idleRpm = 1450, limiterRpm = 14600;
constexpr int    pitTicks = 4 * samplesPerSecond;  // standing, engine running
constexpr double pitAt = 60, pitEnd = 230;         // m: where the bike leaves its box and where the pit limit ends
constexpr double pitSpeed = 16.6;                  // m/s
constexpr int    markTicks = 8;
constexpr double frontSag = 41, rearSag = 19;      // mm of stroke, standing with the rider
constexpr int    rideOutTicks = 8 * samplesPerSecond;  // logged after the last timed lap

double GearRatio(int gear) {
    const double primary = static_cast<double>(primaryTeeth[0]) / primaryTeeth[1];
    const double final = static_cast<double>(sprocketTeeth[1]) / sprocketTeeth[0];
    return primary * final * gearTeeth[gear - 1][0] / gearTeeth[gear - 1][1];
}

// Engine speed that a gear needs at a rear wheel speed in m/s.
double CoupledRpm(int gear, double rearSpeed) { return rearSpeed * 60000 / rearWheelMm * GearRatio(gear); }

// Full load acceleration: torque peaks at 10500 rpm and fades toward the limiter.
double DriveAcceleration(int gear, double rpm) {
    constexpr double peakTorque = 67, wheelRadius = rearWheelMm / 6283.2;  // N m, m
    const double offPeak = (rpm - 10500) / 10500;
    const double torque = rpm > limiterRpm ? 0 : peakTorque * std::max(0.2, 1 - 0.75 * offPeak * offPeak);
    return torque * GearRatio(gear) / wheelRadius / mass;
}

double AtNode(const std::vector<double>& values, double at) {
    const int n = static_cast<int>(values.size()), i = static_cast<int>(at);
    const double part = at - i;
    return values[i % n] * (1 - part) + values[(i + 1) % n] * part;
}

// What the rider wants the speed to be a moment ahead of `at`.
double WantedSpeed(const Ride& ride, double ahead) {
    if (ride.tick < pitTicks) return 0;
    double wanted = AtNode(ride.pace, ride.at + ahead);
    if (ride.lap == 0 && ride.at < pitEnd) wanted = std::min(wanted, pitSpeed);
    const bool ridingIn = ride.timedLaps != 0 && ride.lap > ride.timedLaps;
    if (ridingIn) wanted = std::min(wanted, std::max(22.0, ride.speed - 0.5));
    return wanted;
}

// Throttle and brake move toward what the wanted acceleration takes, as fast as hands do.
void MoveHands(Ride& ride, double drive) {
    constexpr double foresight = 0.16;  // s
    const double wanted = (WantedSpeed(ride, ride.speed * foresight) - ride.speed) / foresight;
    const double push = wanted + Drag(ride.speed), hold = EngineBrake(ride.speed);
    double throttle = drive > 0 ? (push + hold) / (drive + hold) : 0;
    double brake = (-push - hold - 0.4) / brakeLimit;
    if (ride.tick < pitTicks) {
        throttle = 0;
        brake = 0.2;
    }
    if (throttle > 0.03) throttle += ride.hand;
    throttle = std::clamp(throttle, 0.0, 1.0);
    brake = std::clamp(brake, 0.0, 1.0);
    const bool shifting = ride.cut > 0 || ride.blip > 0;
    if (!shifting) ride.throttle += std::clamp(throttle - ride.throttle, -9 * step, 3.2 * step);
    ride.brake += std::clamp(brake - ride.brake, -3.5 * step, 6 * step);
}

void ChangeGears(Ride& ride, double rearSpeed) {
    ride.sinceShift++;
    if (ride.gear == 0) {
        if (ride.tick >= pitTicks - samplesPerSecond / 2) ride.gear = 1;
        return;
    }
    if (ride.cut > 0 && --ride.cut == cutTicks / 2) ride.gear++;
    if (ride.blip > 0 && --ride.blip == blipTicks / 2) ride.gear--;
    if (ride.cut > 0 || ride.blip > 0 || ride.sinceShift < 60) return;
    const double rpm = CoupledRpm(ride.gear, rearSpeed), lower = ride.gear > 1 ? CoupledRpm(ride.gear - 1, rearSpeed) : 1e6;
    const double unrest = 150 * SignedUnit(static_cast<uint16_t>(ride.tick * 40503u));  // no two shifts are alike
    const bool up = ride.gear < bikeGears && rpm > 13700 + unrest && ride.throttle > 0.2;
    const bool down = lower < (ride.brake > 0.15 ? 11600 : 9800) + unrest && ride.throttle < 0.3;
    if (!up && !down) return;
    (up ? ride.cut : ride.blip) = up ? cutTicks : blipTicks;
    ride.blipSize = 0.2 + 0.12 * RandomSigned(ride.random);
    ride.sinceShift = 0;
}

// Below its coupling speed the clutch slips; otherwise the engine follows the rear wheel through a springy drive.
void TurnEngine(Ride& ride, double rearSpeed, double noise) {
    double target = idleRpm + 60 * noise;
    if (ride.gear > 0) {
        const double coupled = CoupledRpm(ride.gear, rearSpeed);
        const double slipping = ride.gear == 1 ? idleRpm + 6200 * std::min(1.0, ride.throttle * 1.6) : idleRpm;
        target = std::max(coupled, slipping);
    }
    if (ride.blip > blipTicks / 4) target += 260;
    ride.rpm += (target - ride.rpm) * (ride.blip > 0 ? 0.18 : ride.speed < 8 ? 0.06 : 0.4);
}

struct Spring {
    double frequency, damping, travel;  // Hz, share of the critical damping, mm
};

// Sprung mass over a wheel that follows the road: `rest` is the stroke that the load would hold, mm. Returns the stroke.
double MoveSuspension(Suspension& suspension, double road, double rest, const Spring& spring) {
    const double omega = 6.2832 * spring.frequency;
    const double wheelBefore = suspension.wheel;
    suspension.wheel += (road - suspension.wheel) * 0.45;  // the tyre swallows the shortest waves
    const double wheelSpeed = (suspension.wheel - wheelBefore) / step;
    const double stroke = suspension.wheel - suspension.body;
    const double force = omega * omega * (stroke - rest) + 2 * spring.damping * omega * (wheelSpeed - suspension.bodySpeed);
    suspension.bodySpeed += step * force;
    suspension.body += step * suspension.bodySpeed;
    const double held = std::clamp(stroke, 0.0, spring.travel);
    if (held != stroke) suspension.body = suspension.wheel - held;  // against the stop
    return held;
}

double RoadHeight(const Ride& ride, double at) {
    const double quarter = (at < 0 ? at + ride.circuit.length : at) * roadStepsPerMetre;
    return ride.speed > 0.2 ? AtNode(ride.circuit.road, quarter) : 0;
}

// The log is marked where lap transmitters stand: at the line and, with more marks a lap, evenly between.
void PassMarks(Ride& ride, double before) {
    if (ride.markLeft > 0) ride.markLeft--;
    for (int k = 1; k <= ride.marksPerLap; k++) {
        const double place = static_cast<double>(k * ride.circuit.length) / ride.marksPerLap;
        if (before < place && ride.at >= place) ride.markLeft = markTicks;
    }
    if (ride.at < ride.circuit.length) return;
    ride.at -= ride.circuit.length;
    ride.lap++;
    if (ride.timedLaps != 0 && ride.lap > ride.timedLaps) ride.samplesLeft = std::min(ride.samplesLeft, rideOutTicks);
    ride.line = 1 + 0.002 * RandomSigned(ride.random);
    SetPace(ride.circuit, ride.lap, ride.random, ride.pace);
}

void MoveBike(Ride& ride, double drive, Moment& moment) {
    const double before = ride.at;
    moment.pull = ride.cut > 0 ? 0 : drive * ride.throttle;
    const double hold = EngineBrake(ride.speed) * (1 - ride.throttle);
    double acceleration = moment.pull - hold - Drag(ride.speed) - brakeLimit * ride.brake;
    if (ride.speed < 6 && moment.pull > 0) acceleration = std::min(acceleration, 4.5);  // the clutch bites
    ride.acceleration += (acceleration - ride.acceleration) * 0.3;
    ride.speed = std::max(0.0, ride.speed + step * ride.acceleration);
    if (ride.speed == 0) ride.acceleration = std::max(0.0, ride.acceleration);
    ride.at += step * ride.speed / ride.line;
    ride.hand = ride.hand * 0.996 + 0.006 * moment.noise[0];
    PassMarks(ride, before);
    moment.sideways = ride.speed * ride.speed * std::fabs(AtNode(ride.circuit.curvature, ride.at));
}

// Leaning rolls a tyre on a smaller circumference; drive and brakes add their slip, and now and then, driving out of a
// bend, the rear tyre lets go for a moment.
void TurnWheels(Ride& ride, Moment& moment) {
    const double lean = std::min(1.0, moment.sideways / gripLimit);
    const bool onEdge = lean > 0.35 && ride.throttle > 0.45 && moment.pull > 4;
    if (onEdge && RandomBelow(ride.random, 512) == 0) ride.spin = 0.05;
    ride.spin *= 0.965;
    const double rearSlip = 0.0035 * moment.pull + ride.spin - ride.brake * (0.022 + 0.012 * moment.noise[1]);
    moment.rearSpeed = ride.speed * (1 + 0.028 * lean + rearSlip);
    moment.frontSpeed = ride.speed * (1 + 0.022 * lean - 0.009 * ride.brake);
}

// Bends press both ends down, brakes the front and the engine the rear.
void MoveSuspensions(Ride& ride, Moment& moment) {
    constexpr Spring front{2.9, 0.45, 126}, rear{2.6, 0.45, 66};
    constexpr double wheelbase = 1.4, rearLeverage = 0.5;  // m; stroke of the shock for that of the wheel
    const double g = moment.sideways / gravity, pressed = std::sqrt(1 + g * g) - 1;
    moment.frontStroke = MoveSuspension(ride.front, RoadHeight(ride, ride.at),
        frontSag + 26 * pressed - 4.9 * ride.acceleration, front);
    moment.rearStroke = MoveSuspension(ride.rear, RoadHeight(ride, ride.at - wheelbase) * rearLeverage,
        rearSag + 13 * pressed + 1.3 * ride.acceleration, rear);
}

void DrawNoise(Random& random, Moment& moment) {
    for (int k = 0; k < 8; k += 4) {
        const uint64_t bits = NextRandom(random);
        for (int lane = 0; lane < 4; lane++) moment.noise[k + lane] = SignedUnit(static_cast<uint16_t>(bits >> (16 * lane)));
    }
}

// Rides the stretch that is not logged and sets the length of the log.
void SwitchOn(Ride& ride, const SampleLogOptions& options) {
    ride.samplesLeft = std::clamp(options.skipSeconds, 0, longestLogSeconds) * samplesPerSecond;
    for (BikeSample unseen; NextSample(ride, unseen);) {}
    const int seconds = std::clamp(options.seconds, 0, longestLogSeconds);
    ride.samplesLeft = (seconds == 0 && ride.timedLaps != 0 ? longestLogSeconds : seconds) * samplesPerSecond;
}

}  // namespace

Ride StartRide(const SampleLogOptions& options) {
    Ride ride{};
    ride.circuit = MakeCircuit(options.course);
    ride.random = {options.seed * 0xD1342543DE82EF95u + 1};
    ride.timedLaps = std::clamp(options.laps, 0, 100000);
    ride.marksPerLap = std::clamp(options.marksPerLap, 1, 3);
    ride.lowBattery = options.lowBattery;
    ride.at = pitAt;
    ride.line = 1;
    ride.rpm = idleRpm;
    ride.mixture = 13.8;
    ride.water = 68;
    ride.volts = 12.5;
    ride.front.body = -frontSag;
    ride.rear.body = -rearSag;
    SetPace(ride.circuit, 0, ride.random, ride.pace);
    SwitchOn(ride, options);
    return ride;
}

bool NextSample(Ride& ride, BikeSample& sample) {
    if (ride.samplesLeft <= 0) return false;
    ride.samplesLeft--;
    Moment moment{};
    DrawNoise(ride.random, moment);
    const double drive = ride.gear == 0 ? 0 : DriveAcceleration(ride.gear, ride.rpm);
    MoveHands(ride, drive);
    MoveBike(ride, drive, moment);
    TurnWheels(ride, moment);
    ChangeGears(ride, moment.rearSpeed);
    TurnEngine(ride, moment.rearSpeed, moment.noise[2]);
    MoveSuspensions(ride, moment);
    ReadSensors(ride, moment);
    sample = ride.shown;
    ride.tick++;
    return true;
}

std::vector<BikeSample> SimulateRide(const SampleLogOptions& options) {
    std::vector<BikeSample> samples;
    Ride ride = StartRide(options);
    for (BikeSample sample; NextSample(ride, sample);) samples.push_back(sample);
    return samples;
}
