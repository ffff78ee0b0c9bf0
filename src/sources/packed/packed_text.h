// A file of another kind as the text in it, read from front to end and from the front again.
#pragma once

#include <QIODevice>

namespace lumoplot {

class TPackedText : public QIODevice {
public:
    bool isSequential() const override { return true; }
    /// Bytes of the file that have been read, and that it has: for progress. Equal at its end.
    virtual qint64 RawPosition() const = 0;
    virtual qint64 RawSize() const = 0;

protected:
    qint64 writeData(const char*, qint64) override { return -1; }
};

} // namespace lumoplot
