#include "apps/recovery/TableLeaf.h"

#include <algorithm>
#include <bit>
#include <optional>

#include "apps/recovery/BigEndian.h"

namespace KT {

namespace {

constexpr char kTableLeaf = 0x0d;
constexpr std::size_t kDatabaseHeaderBytes = 100;  // before the first page's own header
constexpr std::size_t kPageHeaderBytes = 8;
constexpr std::size_t kCellCount = 3;  // place in the page's header
constexpr std::size_t kPageNumberBytes = 4;

// Takes values from the front of some bytes. After the first one that is not there all others are not there either.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::optional<std::string_view> Bytes(std::uint64_t count) {
    if (count > bytes_.size()) {
      bytes_ = {};
      return std::nullopt;
    }
    const std::string_view taken = bytes_.substr(0, static_cast<std::size_t>(count));
    bytes_.remove_prefix(taken.size());
    return taken;
  }

  // Seven bits a byte while the highest bit is set, and all eight of the ninth.
  std::optional<std::uint64_t> Varint() {
    std::uint64_t number = 0;
    for (int place = 1; place <= 9; ++place) {
      const auto next = Bytes(1);
      if (!next.has_value()) {
        return std::nullopt;
      }
      const auto byte = static_cast<unsigned char>(next->front());
      if (place == 9) {
        return number << 8 | byte;
      }
      number = number << 7 | (byte & 0x7FU);
      if ((byte & 0x80U) == 0) {
        break;
      }
    }
    return number;
  }

  bool IsAtEnd() const { return bytes_.empty(); }

 private:
  std::string_view bytes_;
};

std::uint64_t BodyBytes(std::uint64_t serialType) {
  constexpr std::uint64_t kFixed[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, 0, 0};
  return serialType < std::size(kFixed) ? kFixed[serialType] : (serialType - 12) / 2;
}

std::int64_t SignedNumber(std::string_view bytes) {
  const std::uint64_t number = BigEndian(bytes);
  const auto unusedBits = static_cast<int>(64 - 8 * bytes.size());
  return static_cast<std::int64_t>(number << unusedBits) >> unusedBits;
}

// 10 and 11 are in no database file.
SqlValue ValueOf(std::uint64_t serialType, std::string_view body) {
  if (serialType == 0) {
    return std::monostate();
  }
  if (serialType < 7) {
    return SignedNumber(body);
  }
  if (serialType == 7) {
    return std::bit_cast<double>(BigEndian(body));
  }
  if (serialType < 12) {
    return static_cast<std::int64_t>(serialType - 8);
  }
  if (serialType % 2 == 0) {
    return SqlBlob{std::string(body)};
  }
  return std::string(body);
}

// The header of a record lists the types of its values, which follow it. A record takes up its bytes exactly.
std::optional<std::vector<SqlValue>> ReadRecord(std::string_view record) {
  const auto headerBytes = Reader(record).Varint();
  if (!headerBytes.has_value()) {
    return std::nullopt;
  }
  Reader body(record);
  const auto header = body.Bytes(*headerBytes);
  if (!header.has_value() || header->empty()) {
    return std::nullopt;
  }
  Reader types(*header);
  types.Varint();
  std::vector<SqlValue> values;
  while (!types.IsAtEnd()) {
    const auto type = types.Varint();
    if (!type.has_value() || *type == 10 || *type == 11) {
      return std::nullopt;
    }
    const auto bytes = body.Bytes(BodyBytes(*type));
    if (!bytes.has_value()) {
      return std::nullopt;
    }
    values.push_back(ValueOf(*type, *bytes));
  }
  return body.IsAtEnd() ? std::optional(std::move(values)) : std::nullopt;
}

class Leaf {
 public:
  Leaf(std::string_view database, const PageLayout& layout, std::size_t number)
      : database_(database),
        pageBytes_(layout.pageBytes),
        usableBytes_(layout.pageBytes - layout.reservedBytes),
        page_(Page(number)),
        headerStart_(number == 1 ? kDatabaseHeaderBytes : 0) {}

  std::vector<LeafRow> Rows(std::size_t& budgetBytes) const {
    std::vector<LeafRow> rows;
    if (page_.empty() || page_[headerStart_] != kTableLeaf) {
      return rows;
    }
    const std::size_t count = BigEndian(page_.substr(headerStart_ + kCellCount, 2));
    Reader places(page_.substr(headerStart_ + kPageHeaderBytes, 2 * count));
    for (auto place = places.Bytes(2); place.has_value(); place = places.Bytes(2)) {
      if (auto row = RowAt(BigEndian(*place), budgetBytes); row.has_value()) {
        rows.push_back(*std::move(row));
      }
    }
    return rows;
  }

 private:
  // Empty for one that is not there as a whole.
  std::string_view Page(std::uint64_t number) const {
    const bool isThere = number >= 1 && number <= database_.size() / pageBytes_;
    return isThere ? database_.substr(static_cast<std::size_t>(number - 1) * pageBytes_, pageBytes_)
                   : std::string_view();
  }

  std::optional<LeafRow> RowAt(std::size_t place, std::size_t& budgetBytes) const {
    if (place < kPageHeaderBytes || place >= usableBytes_) {
      return std::nullopt;
    }
    Reader cell(page_.substr(place, usableBytes_ - place));
    const auto size = cell.Varint();
    const auto rowId = cell.Varint();
    if (!size.has_value() || !rowId.has_value() || *size > budgetBytes) {
      return std::nullopt;
    }
    budgetBytes -= static_cast<std::size_t>(*size);
    const auto record = Payload(cell, static_cast<std::size_t>(*size));
    auto values = record.has_value() ? ReadRecord(*record) : std::nullopt;
    if (!values.has_value()) {
      return std::nullopt;
    }
    return LeafRow{static_cast<std::int64_t>(*rowId), *std::move(values)};
  }

  // How much of a payload stands on the leaf itself; the rest is on overflow pages.
  std::size_t LocalBytes(std::size_t size) const {
    const std::size_t most = usableBytes_ - 35;
    if (size <= most) {
      return size;
    }
    const std::size_t least = (usableBytes_ - 12) * 32 / 255 - 23;
    const std::size_t local = least + (size - least) % (usableBytes_ - kPageNumberBytes);
    return local <= most ? local : least;
  }

  std::optional<std::string> Payload(Reader& cell, std::size_t size) const {
    const auto local = cell.Bytes(LocalBytes(size));
    if (!local.has_value()) {
      return std::nullopt;
    }
    std::string payload(*local);
    auto next = payload.size() < size ? cell.Bytes(kPageNumberBytes) : std::nullopt;
    while (payload.size() < size) {
      const std::string_view page = next.has_value() ? Page(BigEndian(*next)) : std::string_view();
      if (page.empty()) {
        return std::nullopt;
      }
      next = page.substr(0, kPageNumberBytes);
      payload += page.substr(kPageNumberBytes, std::min(size - payload.size(), usableBytes_ - kPageNumberBytes));
    }
    return payload;
  }

  const std::string_view database_;
  const std::size_t pageBytes_;
  const std::size_t usableBytes_;
  const std::string_view page_;
  const std::size_t headerStart_;
};

}  // namespace

std::vector<LeafRow> RowsOfLeaf(std::string_view database, const PageLayout& layout, std::size_t number,
                                std::size_t& budgetBytes) {
  return Leaf(database, layout, number).Rows(budgetBytes);
}

}  // namespace KT
