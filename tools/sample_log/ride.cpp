#include "tools/sample_log/ride.h"

#include <algorithm>
#include <cmath>

#include "tools/sample_log/pace.h"

namespace {

constexpr double step = 1.0 / samplesPerSecond;  // s
constexpr double gravity = 9.81, mass = 255;     // m/s2; kg with rider and fuel
constexpr double idleRpm = 1450, limiterRpm = 14600;
constexpr int    pitTicks = 4 * samplesPerSecond;  // standing, engine running
constexpr double pitAt = 60, pitEnd = 230;         // m: where the bike leaves its box and where the pit limit ends
constexpr double pitSpeed = 16.6;                  // m/s
constexpr int    cutTicks = 12, blipTicks = 26;    // of an upshift and a downshift
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

double Limited(double value, double low, double high) { return std::clamp(value, low, high); }

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
    if (ride.timedLaps != 0 && ride.lap > ride.timedLaps) wanted = std::min(wanted, 22.0);
    return wanted;
}

// Throttle and brake move toward what the wanted acceleration takes, as fast as hands do.
void MoveHands(Ride& ride, double drive, double drag) {
    constexpr double foresight = 0.16;  // s
    const double wanted = (WantedSpeed(ride, ride.speed * foresight) - ride.speed) / foresight;
    const double engineBrake = EngineBrake(ride.speed);
    const double push = wanted + drag;
    double throttle = drive > 0 ? (push + engineBrake) / (drive + engineBrake) : 0;
    double brake = (-push - engineBrake - 0.4) / brakeLimit;
    if (ride.tick < pitTicks) throttle = 0, brake = 0.2;
    throttle = Limited(throttle + (throttle > 0.03 ? ride.hand : 0), 0, 1);
    brake = Limited(brake, 0, 1);
    if (ride.cut == 0 && ride.blip == 0)
        ride.throttle += Limited(throttle - ride.throttle, -9 * step, 3.2 * step);
    ride.brake += Limited(brake - ride.brake, -3.5 * step, 6 * step);
}

void StartShift(Ride& ride, int& ticks, int length) {
    ticks = length;
    ride.sinceShift = 0;
    ride.blipSize = 0.2 + 0.12 * RandomSigned(ride.random);
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
    // No two shifts come at the same engine speed.
    const double unrest = 150 * SignedUnit(static_cast<uint16_t>(ride.tick * 40503));
    const double rpm = CoupledRpm(ride.gear, rearSpeed);
    if (ride.gear < bikeGears && rpm > 13700 + unrest && ride.throttle > 0.2) StartShift(ride, ride.cut, cutTicks);
    else if (ride.gear > 1 && ride.throttle < 0.3 && CoupledRpm(ride.gear - 1, rearSpeed) < (ride.brake > 0.15 ? 11600 : 9800) + unrest)
        StartShift(ride, ride.blip, blipTicks);
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

// Sprung mass over a wheel that follows the road: `rest` is the stroke that the load would hold, mm. Returns the stroke.
double MoveSuspension(Suspension& suspension, double road, double rest, double frequency, double damping, double travel) {
    const double omega = 6.2832 * frequency;
    const double wheelBefore = suspension.wheel;
    suspension.wheel += (road - suspension.wheel) * 0.45;  // the tyre swallows the shortest waves
    const double wheelSpeed = (suspension.wheel - wheelBefore) / step;
    const double stroke = suspension.wheel - suspension.body;
    suspension.bodySpeed += step * (omega * omega * (stroke - rest) + 2 * damping * omega * (wheelSpeed - suspension.bodySpeed));
    suspension.body += step * suspension.bodySpeed;
    const double held = Limited(stroke, 0, travel);
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

int Stored(double value, int low, int high) { return std::clamp(static_cast<int>(std::floor(value + 0.5)), low, high); }

void MoveBike(Ride& ride, double drive, double drag, double noise) {
    const double pull = ride.cut > 0 || ride.gear == 0 ? 0 : drive * ride.throttle;
    const double hold = EngineBrake(ride.speed) * (1 - ride.throttle);
    const double before = ride.at;
    double acceleration = pull - hold - drag - brakeLimit * ride.brake;
    if (ride.speed < 6 && pull > 0) acceleration = std::min(acceleration, 4.5);  // the clutch bites
    ride.acceleration += (acceleration - ride.acceleration) * 0.3;
    ride.speed += step * ride.acceleration;
    if (ride.speed <= 0) ride.speed = 0, ride.acceleration = std::max(0.0, ride.acceleration);
    ride.at += step * ride.speed / ride.line;
    ride.hand = ride.hand * 0.996 + 0.006 * noise;
    PassMarks(ride, before);
}

// Probes with a lag of their own, and inputs that the unit takes at a fraction of the log's rate.
void ReadSlowSensors(Ride& ride, const double* noise) {
    const bool overrun = ride.throttle < 0.02 && ride.rpm > 3000;
    const double mixture = ride.gear == 0 ? 13.8 : overrun ? 14.7 : 14.3 - 1.7 * ride.throttle;
    ride.mixture += (mixture - ride.mixture) * 0.035;
    ride.water += (82 - ride.speed * 0.12 + 6 * ride.throttle - ride.water) * 0.00012;
    const double charge = 12.4 + 1.4 * Limited((ride.rpm - 1200) / 2600, 0, 1) - 0.15 * ride.throttle;
    ride.volts += (charge - (ride.cut > 0 ? 0.5 : 0) - ride.volts) * 0.04;
    const bool brownOut = ride.lowBattery && ride.tick % 8000 > 7880;
    BikeSample& shown = ride.shown;
    if (ride.tick % 4 == 0) shown.laf1 = Stored(ride.mixture * 100 + 5 * noise[7], 900, 1800);
    if (ride.tick % 4 == 2 || ride.tick == 0) shown.laf2 = Stored(ride.mixture * 100 + 9 + 6 * noise[0], 900, 1800);
    if (ride.tick % 40 == 0) shown.aux2 = Stored(ride.water * 100 + 3 * noise[2], 0, 12000);
    if (ride.tick % 5 == 0) shown.vb = Stored(ride.volts * 100 + 2 * noise[4] - (brownOut ? 420 : 0), 0, 2000);
}

void ReadFastSensors(Ride& ride, double frontSpeed, double rearSpeed, double front, double rear, const double* noise) {
    const double throttle = ride.blip > blipTicks / 3 ? std::max(ride.throttle, ride.blipSize) : ride.throttle;
    const bool turning = ride.speed > 0.8;  // below that no pulse comes in time
    BikeSample& shown = ride.shown;
    shown.ne = Stored(ride.rpm + 14 * noise[3], 0, 16000);
    shown.th = Stored(throttle * 1000 + noise[4], 0, 1000);
    shown.vfw = turning ? Stored(frontSpeed * 36 + 0.8 * noise[5], 0, 4095) : 0;
    shown.vrw = turning ? Stored(rearSpeed * 36 + 1.2 * noise[6], 0, 4095) : 0;
    shown.fsus = Stored(front * 100 + 6 * noise[5], 0, 13000);
    shown.rsus = Stored(rear * 100 + 4 * noise[6], 0, 7500);
    shown.aux1 = Stored(ride.brake * 1250 + (ride.brake > 0 ? 4 * noise[1] : 0), 0, 2000);
    shown.mark = ride.markLeft > 0;
    shown.flag = ride.cut > 0;
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
    const uint64_t noiseA = NextRandom(ride.random), noiseB = NextRandom(ride.random);
    double noise[8];
    for (int k = 0; k < 4; k++) {
        noise[k] = SignedUnit(static_cast<uint16_t>(noiseA >> (16 * k)));
        noise[k + 4] = SignedUnit(static_cast<uint16_t>(noiseB >> (16 * k)));
    }

    const double drive = ride.gear == 0 ? 0 : DriveAcceleration(ride.gear, ride.rpm);
    MoveHands(ride, drive, Drag(ride.speed));
    MoveBike(ride, drive, Drag(ride.speed), noise[0]);

    const double sideways = ride.speed * ride.speed * std::fabs(AtNode(ride.circuit.curvature, ride.at));
    const double lean = std::min(1.0, sideways / gripLimit);
    const double pull = ride.cut > 0 ? 0 : drive * ride.throttle;
    if (lean > 0.35 && ride.throttle > 0.45 && pull > 4 && (noiseB >> 20 & 511) == 0) ride.spin = 0.05;
    ride.spin *= 0.965;
    // Leaning rolls a wheel on a smaller circumference; drive and brakes add their slip.
    const double rearSpeed = ride.speed * (1 + 0.028 * lean + 0.0035 * pull + ride.spin - ride.brake * (0.022 + 0.012 * noise[1]));
    const double frontSpeed = ride.speed * (1 + 0.022 * lean - 0.009 * ride.brake);
    ChangeGears(ride, rearSpeed);
    TurnEngine(ride, rearSpeed, noise[2]);

    const double cornering = std::sqrt(1 + sideways * sideways / (gravity * gravity)) - 1;
    const double front = MoveSuspension(ride.front, RoadHeight(ride, ride.at),
        frontSag + 26 * cornering - 4.9 * ride.acceleration, 2.9, 0.45, 126);
    const double rear = MoveSuspension(ride.rear, RoadHeight(ride, ride.at - 1.4) * 0.5,
        rearSag + 13 * cornering + 1.3 * ride.acceleration, 2.6, 0.45, 66);

    ReadSlowSensors(ride, noise);
    ReadFastSensors(ride, frontSpeed, rearSpeed, front, rear, noise);
    sample = ride.shown;
    ride.tick++;
    return true;
}
