// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/Answers.h"

#include <random>

namespace velarin::test {

Answer stationAnswer(std::shared_ptr<const StationProgramme> programme, const QByteArray& contentType)
{
    Answer answer;
    answer.programme = std::move(programme);
    answer.contentType = contentType;
    return answer;
}

Answer bodyAnswer(const QByteArray& body, const QByteArray& contentType)
{
    Answer answer;
    answer.body = body;
    answer.contentType = contentType;
    return answer;
}

Answer statusAnswer(int status)
{
    Answer answer = bodyAnswer("<html><body>" + QByteArray::number(status) + "</body></html>", "text/html");
    answer.status = status;
    return answer;
}

Answer redirectAnswer(int status, const QByteArray& location)
{
    Answer answer = statusAnswer(status);
    answer.headers.append({ "Location", location });
    return answer;
}

Answer silentAnswer()
{
    Answer answer;
    answer.headDelay.reset();
    return answer;
}

Answer withFault(Answer answer, Fault fault, Seconds after)
{
    answer.fault = fault;
    answer.faultAfter = after;
    return answer;
}

Answer withStall(Answer answer, Seconds after, Seconds length)
{
    answer.stallLength = length;
    return withFault(std::move(answer), Fault::Stall, after);
}

Answer withFalseInterval(Answer answer)
{
    answer.metadataInterval = 16000;
    answer.intervalIsLie = true;
    return answer;
}

QByteArray webPage()
{
    return "<!DOCTYPE html>\n<html lang=\"it\"><head><title>Radio</title></head>\n<body>Ascolta la radio dal "
           "nostro sito.</body></html>\n";
}

QByteArray picture()
{
    return QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJ"
                                  "RU5ErkJggg==");
}

QByteArray garbage(qsizetype size, quint32 seed)
{
    std::mt19937 random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(random() & 0xff);
    return bytes;
}

}
