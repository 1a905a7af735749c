// SPDX-License-Identifier: CC-BY-4.0
// SeqPad: the pad carries the line: a slow swell of a whole bar, an octave above the
// pitch, warm, and gone when the next begins.
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
0.3f,
0.035f,
0.35f,
0.0f,
0.0f,
0.5f,
0.9f,
0.08f,
0.0f,
1.0f,
0.35f,
0.6f,
0.97f,
1.0f,
2.0f,
0.45f,
};
