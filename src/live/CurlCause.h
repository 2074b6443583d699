// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/StreamHeadParser.h"
#include "platform/AudioPlayer.h"

#include <curl/curl.h>

namespace velarin::live {

// What is known when libcurl is done with a transfer.
struct TransferEnd
{
    CURLcode result{ CURLE_OK };
    // errno of the last call that failed; 0 if none did.
    long systemError{ 0 };
    // Bytes of the requests that were sent; 0 if it never came to that.
    long requestBytes{ 0 };
    StreamHeadParser::State head{ StreamHeadParser::State::Reading };
    // Of the last head read; 0 without one.
    int status{ 0 };
    // libcurl's words, for the developer log.
    QString text;
};

// Why the transfer ended, as the engine above is told: one error. Its code is the status, one of HttpError, or
// libcurl's code.
//
// A body shorter than announced counts as closed, not as reset: the server took its leave in good order, and many a
// station announces a length that it makes up. A TLS connection that ends without its closing alert counts as reset:
// nobody vouches for that end.
[[nodiscard]] AudioErrorChain causeOf(const TransferEnd& end);

}
