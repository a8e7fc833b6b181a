#pragma once

#include <QByteArray>

#include <string>
#include <vector>

namespace velmo::qt {

/// The paths of those locations of a `text/uri-list` that are files of this machine, in their
/// order. They are the bytes that the list names, whether or not these are UTF-8; comments and
/// other locations are left out. After RFC 2483 and RFC 8089.
std::vector<std::string> LocalFiles(const QByteArray& uriList);

} // namespace velmo::qt
