// SPDX-License-Identifier: CC-BY-4.0
// Bom: the thump of a page. Three notes at once, 110, 220 and 223 hertz: low and soft,
// and the upper two beat slowly against each other while they fade.
// What counts are line 23 and the values on lines 26 to 41. They are, in this order:
//   waveAmount         0 is a saw, 1 a square
//   filterCutoff       of the low-pass: 50 hertz, and 10975 times this
//   filterRes          resonance: 0 plain, above 1 it sings by itself
//   filterAttackCurve  1: the filter's attack rises late; 0: early
//   filterReleaseCurve 1: its release falls early; 0: late
//   filterAttackTime   0 to 1 of the note
//   filterReleaseTime  0 to 1 of what the attack leaves
//   filterEnvAmount    how far it opens (1: 11075 hertz) or closes (-1: 50 hertz)
//   attackCurve        1: the loudness rises late; 0: early
//   releaseCurve       1: it falls early; 0: late
//   attackTime         0 to 1 of the note
//   releaseTime        0 to 1 of what the attack leaves
//   noteLength         half the note, in seconds: 0.05 to 1
//   distGain           drive, 1 to 4: gain in front of the soft limit
//   octave             factor of the pitch: 0.25, 0.5, 1, 2 or 4
//   detunedSawAmount   level of a second saw, a thousandth flat: it beats slowly
// Each value keeps the form of a number and two characters behind it.

static const int values = 16;

static const float patch[values] = {
1.0f,
0.005f,
0.4f,
0.0f,
1.0f,
0.004f,
0.15f,
0.05f,
0.0f,
1.0f,
0.008f,
1.0f,
0.8f,
1.0f,
1.0f,
0.0f,
};
