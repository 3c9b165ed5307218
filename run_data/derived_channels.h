// derived_channels.h -- what a load computes from the logged channels, and the values computed on demand.
//
// Written  VFSus, VRSus, the smoothed channels, channelMax, channelMin and showChannel of a slot, once per load.
// Keys     Shift and Ctrl are read live while these run (platform/keyboard.h).
#pragma once

// Fills VFSus and VRSus, mm/s. With Shift down the gear ratio x 1000 is written into VFSus instead (a diagnostic).
void ComputeSuspensionSpeed(int slot);
// Replaces channels by their running means as smoothingNE, smoothingVW and SmoothingSTD tell, and VRW by VFW with
// VFWCopyVRW. There is no unsmoothed copy.
void SmoothChannels(int slot);
// Fills channelMax and channelMin, and the show flags with AutoOnOffLoad.
void ComputeStatistics(int slot);
// The three in this order, as native and secondary logs want them. The same values, but each smoothed array goes through
// memory once: its extremes are taken from each block while it is at hand.
void FinishChannels(int slot);
// (VRW - VFW) x 1000 / VFW, unit 0.1 %, for VFW above 50 (5.0 km/h); else 0.
double SlipRatio(int slot, int sample);
// Gear 0 to 6 from engine and rear wheel speed; 0 is neutral or clutch open. The ratio x 1000 stays in gearRatioSeen.
int GearPosition(int slot, int sample);
