#include "lns/dialect.h"

#include <algorithm>

#include "lns/members.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace lns {
namespace {

using platform::Error;

constexpr char kUnknownSign = 0;
constexpr const char* kListSeparator = ";";  // of the regions with a decimal comma
constexpr const char* kUserType = "UNVT_";

/// True if the object server checked the format and does not know it. An unreachable device or a lost
/// connection proves nothing about formats.
bool RefusesFormat(const Error& error) {
  const std::int64_t code = std::int64_t{error.number()} - platform::kObjectServerErrorBase;
  return code >= 0 && code <= 0xFFFF && code != members::kNoCommunication;
}

[[noreturn]] void FailFormat(const std::string& description) {
  throw Error(platform::ObjectServerError(members::kFormatFailed), "LNS", description);
}

/// The sign before the number's fraction; kUnknownSign for a number without a fraction and for other texts.
char DecimalSignOf(const std::string& field) {
  for (const char sign : {'.', ','}) {
    std::string plain = field;
    if (std::ranges::count(plain, sign) != 1 || plain.starts_with(',') || plain.ends_with(',')) continue;
    std::ranges::replace(plain, sign, '.');
    if (text::IsNumeric(plain)) return sign;
  }
  return kUnknownSign;
}

/// True for numbers separated by blanks; a blank beside a comma is not a separator.
bool SeparatesByBlanks(const std::string& text) {
  const auto is_number = [](const std::string& field) {
    return text::IsNumeric(field) || DecimalSignOf(field) == ',';
  };
  return text.find(' ') != std::string::npos && std::ranges::all_of(text::Split(text, " "), is_number);
}

/// The separator of the fields in this text, if the point has this separator.
std::string SeparatorIn(const std::string& text, const std::string& separator) {
  const auto has = [&](const char* sign) { return text.find(sign) != std::string::npos; };
  if (separator == ",")
    return has(kListSeparator) ? kListSeparator : SeparatesByBlanks(text) ? " " : separator;
  if (separator == " ") return !has(" ") && has(kListSeparator) ? kListSeparator : separator;
  return separator;
}

}  // namespace

void Dialect::Note(const std::string& difference) {
  if (noted_.insert(difference).second) findings_.push_back(difference);
}

std::string Dialect::TakeFindings() { return text::Join(std::exchange(findings_, {}), "; "); }

void Dialect::SetAccessOption(const NetworkVariable& variable, std::int32_t option) {
  if (!has_access_option_) return;
  try {
    variable.SetAccessOption(option);
  } catch (const Error& error) {
    if (!IsUnknownMember(error)) throw;
    has_access_option_ = false;
    Note("no access option");
  }
}

std::vector<std::string> Dialect::Forms(const std::string& format) const {
  const bool with_units = format.starts_with("#");
  const std::string units = with_units ? format.substr(0, 3) : "", name = format.substr(units.size());
  std::vector<std::string> forms = {format};
  if (const auto known = accepted_formats_.find(format); known != accepted_formats_.end())
    forms.insert(forms.begin(), known->second);
  if (with_units) forms.push_back(name + units);
  if (name.starts_with(kUserType) && !user_type_owner_.empty())
    forms.push_back(user_type_owner_ + name + units);
  return forms;
}

void Dialect::SetFormat(const NetworkVariable& variable, const std::string& format) {
  std::optional<Error> refusal;
  for (const std::string& form : Forms(format)) {
    try {
      variable.SetFormatType(form);
    } catch (const Error& error) {
      if (!RefusesFormat(error)) throw;
      if (!refusal) refusal = error;
      continue;
    }
    if (form != format) Note(form.starts_with('#') ? "fully qualified types" : "unit system after the type");
    accepted_formats_[format] = form;
    return;
  }
  throw *refusal;
}

std::string Dialect::Value(const NetworkVariable& variable, const std::string& separator) {
  const std::string text = variable.Value();
  const std::string found = SeparatorIn(text, separator);
  std::vector<std::string> fields = text::Split(text, found);
  char sign = decimal_sign_;
  for (std::string& field : fields) {
    const char own = DecimalSignOf(field);
    const bool misplaced = own == kUnknownSign && field.find(',') != std::string::npos;
    if (misplaced || (own != kUnknownSign && sign != kUnknownSign && own != sign))
      FailFormat("The value '" + text + "' can be read in more than one way.");
    if (own != kUnknownSign) sign = own;
    if (own == ',') std::ranges::replace(field, ',', '.');
  }
  if (sign == ',') Note("decimal comma");
  if (found != separator) Note("'" + found + "' in place of '" + separator + "'");
  decimal_sign_ = sign;
  // A single field shows no separator.
  if (fields.size() > 1) separators_[separator] = found;
  return text::Join(fields, separator);
}

void Dialect::SetValue(const NetworkVariable& variable, const std::string& text,
                       const std::string& separator) {
  const auto seen = separators_.find(separator);
  const std::string used = seen == separators_.end() ? separator : seen->second;
  std::vector<std::string> fields = text::Split(text, separator);
  const bool other_region =
      std::ranges::any_of(separators_, [](const auto& each) { return each.first != each.second; });
  for (std::string& field : fields) {
    if (DecimalSignOf(field) != '.') continue;
    if (decimal_sign_ == kUnknownSign && other_region)
      FailFormat("No value has shown the decimal sign of the object server: '" + field +
                 "' cannot be written.");
    // Otherwise its fraction would be read as the next field.
    if (decimal_sign_ == ',' && used == ",")
      FailFormat("The object server uses one sign in fractions and between values: '" + field +
                 "' cannot be written.");
    if (decimal_sign_ != ',') continue;
    // "3." and ".5" are numbers here, but not in every region.
    const std::size_t sign = field.find('.');
    const auto is_digit = [&](std::size_t at) {
      return at < field.size() && field[at] >= '0' && field[at] <= '9';
    };
    const bool begins = !is_digit(sign - 1), ends = !is_digit(sign + 1);
    field.replace(sign, 1, ends ? "" : begins ? "0," : ",");
  }
  variable.SetValue(text::Join(fields, used));
}

}  // namespace lns
