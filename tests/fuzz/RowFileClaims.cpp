#include "RowFileClaims.h"

#include "FuzzClaims.h"

using namespace mirror;

const char* brokenRecordFileClaim(const QByteArray& bytes)
{
    return RowFileClaims<Record>::broken(bytes);
}

const char* brokenKeyValueFileClaim(const QByteArray& bytes)
{
    return RowFileClaims<KeyValue>::broken(bytes);
}
