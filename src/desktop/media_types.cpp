// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media_types.h"

namespace corvane {

QStringList mediaTypes() {
    return {
        QStringLiteral("application/x-corvane-cd-track"),  // CDA
        QStringLiteral("image/bmp"),                       // BMP
        QStringLiteral("image/jpeg"),                      // JPEG, JPG
        QStringLiteral("image/gif"),                       // GIF
        QStringLiteral("video/x-msvideo"),                 // AVI
        QStringLiteral("video/vnd.avi"),                   // its newer name
        QStringLiteral("video/quicktime"),                 // MOV, QT
        QStringLiteral("audio/midi"),                      // MID, RMI
        QStringLiteral("video/mpeg"),                      // MPG, MPEG, MPV, M1V
        QStringLiteral("audio/mp2"),                       // MP2
        QStringLiteral("audio/x-wav"),                     // WAV
        QStringLiteral("audio/vnd.wave"),                  // its newer name
        QStringLiteral("audio/mpeg"),                      // MP3
        QStringLiteral("audio/vnd.rn-realaudio"),          // RA
        QStringLiteral("application/vnd.rn-realmedia"),    // RM, RMM
        QStringLiteral("application/ram"),                 // RAM
        QStringLiteral("audio/basic"),                     // SND, AU
        QStringLiteral("audio/x-aiff"),                    // AIF, AIFF
        QStringLiteral("audio/x-aifc"),                    // AIFC
    };
}

}  // namespace corvane
