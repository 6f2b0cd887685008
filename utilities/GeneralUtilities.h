// SPDX-License-Identifier: MIT
// Free functions behind the panels, the chart and the files: the fixed text forms of frequencies
// and sizes, look-ups in the receiver's vocabularies, times of day, and the colours of levels.
//
// No function depends on the machine's language: the point is the only decimal mark. Number texts
// are rounded to nearest, halves away from zero; a shown zero has no minus. Bad codes and names
// are no errors: look-ups answer "ERR", 0 or false.
#pragma once

#include "common/Clock.h"
#include "common/Hertz.h"

#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace veldron::GeneralUtilities {

/// A byte count with a letter, k for 1024 and M for 1048576 bytes: "   12.5k", "   1000k",
/// "   97.7M". The three blanks in front belong to it.
[[nodiscard]] QString FormatFileSize(qint64 Size);
/// The long form of the chart: groups of three digits down to 1 Hz, "145.500.000", "999.999".
[[nodiscard]] QString FrequencyText(Hertz Value);
/// The form of the panels' frequency fields, in MHz down to 10 Hz: "145.50000".
[[nodiscard]] QString FormatMHz(Hertz Value);
/// The form of the step fields, in kHz down to 1 Hz: "25.000".
[[nodiscard]] QString FormatKHz(Hertz Value);
/// \a Text without everything but the digits 0 to 9. The points in the texts above are no decimal
/// marks, so this comes before LeadingNumber where a list row is to become hertz again.
[[nodiscard]] QString DigitsOnly(const QString &Text);
/// The number that \a Text begins with, behind leading blanks: an optional sign and digits with at
/// most one point; 0 if there is none.
[[nodiscard]] double LeadingNumber(const QString &Text);

/// The name of a mode code from 1 to 17, "ERR" for any other.
[[nodiscard]] QString ModeName(qint16 Code);
/// The code of a mode name, blanks and case included; 0 for any other text.
[[nodiscard]] qint16 ModeCode(const QString &Name);
/// The name of a receiver code from 1 to 11, "ERR" for any other.
[[nodiscard]] QString ReceiverName(qint16 Code);
/// The code of a receiver name; 0 for any other text.
[[nodiscard]] qint16 ReceiverCode(const QString &Name);
/// Element 0 is the receiver's name (QString), elements 1 upward are its mode codes (qint16) in
/// the order of the list. A code outside 1 to 11 yields the one element "ERR".
[[nodiscard]] QVariantList ReceiverTable(qint16 Code);
/// Whether the receiver has an attenuator that can be switched; false for unknown codes.
[[nodiscard]] bool HasAttenuator(qint16 Code);

/// Holds the thread until \a Seconds have passed on \a clock; the event loop does not turn.
/// Midnight is not folded: a wait that crosses it ends with WaitLimit, after a minute.
void WaitSeconds(Clock &clock, float Seconds);
/// \a To minus \a From, both seconds since midnight, folded into -43200 up to but not including
/// 43200, so that two moments just across midnight are a small difference apart.
[[nodiscard]] float TimeDifference(float From, float To);
/// A time of day as "01:01", or "01:01:01" with \a ShowSeconds; whole days are taken off or added.
/// Exactly 86400 prints as hour 24. What is no number prints as 0.
[[nodiscard]] QString TimeText(float Seconds, bool ShowSeconds);

/// The colour 0x00BBGGRR of a level from 0 to 255 in one of the schemes 0 "black to white",
/// 1 "white to black", 2 "hot metal", 3 "rainbow", 4 "spectrum 5"; any other is "spectrum 6".
[[nodiscard]] quint32 PaletteColour(quint8 Level, qint16 Scheme);
/// The colour 0x00BBGGRR of a hue in degrees (red 0, green 120, blue 240), a lightness and a
/// saturation, both from 0 to 1. Channels are rounded half to even.
[[nodiscard]] quint32 HLSToRGB(float Hue, float Lightness, float Saturation);
/// One channel, from 0 to 1: between \a n1 and \a n2 by where \a Hue lies on the circle.
[[nodiscard]] float HLSValue(float n1, float n2, float Hue);

} // namespace veldron::GeneralUtilities
