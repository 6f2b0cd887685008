// SPDX-License-Identifier: MIT
// The numbers and letters of the line between the program and the unit, each in this one place.
#pragma once

#include "common/LevelScan.h"

#include <QtGlobal>

#include <cstddef>

namespace veldron::Wire {

// ---- the line

/// Line settings of the text protocol: 9600 baud, no parity, 8 data bits, 2 stop bits.
inline constexpr const char *kTextLine = "9600,n,8,2";
/// How long that line takes for a byte: start bit, 8 data bits, 2 stop bits.
inline constexpr double kMillisecondsPerByte = 11.0 / 9.6;
/// The same settings, in the spelling that is set after an image download.
inline constexpr const char *kTextLineAfterImage = "9600,N,8,2";
/// Line settings of an image download: one stop bit.
inline constexpr const char *kImageLine = "115200,N,8,1";
inline constexpr qint16 kBinaryInput = 1;   ///< value of the property InputMode
inline constexpr qint16 kRequestToSend = 2; ///< value of Handshaking: RTS/CTS
inline constexpr qint16 kImageReceiveThreshold = 500;

// ---- an exchange

inline constexpr const char *kLineEnd = "\r\n";
inline constexpr const char *kRefusal = "?"; ///< understood, and not done
inline constexpr char kWrite = 'W';          ///< first letter of a command that sets something
inline constexpr char kRead = 'R';           ///< first letter of a command that asks
inline constexpr char kAccepted = ' ';       ///< first character of a positive reply to a write
/// A read is answered by the last three letters of its command, then the value.
inline constexpr qsizetype kEchoLength = 3;
/// Behind the value stand one character without a meaning and the line end.
inline constexpr qsizetype kReplyTail = 3;
/// From the moment before the command is written until its whole reply line is there.
inline constexpr float kReplyLimitSeconds = 1.0F;
/// From one chunk of a download to the next.
inline constexpr float kQuietLimitSeconds = 1.0F;

// ---- commands that are no setting

inline constexpr const char *kReadVersion = "RIVE";
inline constexpr const char *kVersionMark = "Ver"; ///< stands in the version text of the unit
inline constexpr const char *kReadScan = "RIFD";
inline constexpr const char *kReadImage = "RVIM";
/// The marker's read is answered in a form of its own: kMarkerReply, the value, the line end.
inline constexpr const char *kReadMarker = "RICD";
inline constexpr char kMarkerReply = 'f';
inline constexpr const char *kStepMarker = "WUDS"; ///< followed by the direction
inline constexpr int kMarkerUp = 1;
inline constexpr int kMarkerDown = 2;
inline constexpr const char *kEndMarkerSteps = "WUMC";

// ---- units of the values

inline constexpr qint64 kHertzPerKilohertz = 1000;
inline constexpr qint64 kHertzPerMegahertz = 1000000;
inline constexpr qint16 kSwitchOn = 1;
inline constexpr qint16 kSwitchOff = 2;

// ---- downloads, in bytes

inline constexpr std::size_t kFullScan = kScanSteps + 1;
inline constexpr std::size_t kTerminatorLength = 3; ///< blank, CR, LF
inline constexpr std::size_t kFullFrame = kFullScan + kTerminatorLength;
inline constexpr qsizetype kImageSize = 168036;  ///< an image download ends here
inline constexpr qsizetype kImageStore = 168041; ///< and comes back in a block of this size

} // namespace veldron::Wire
