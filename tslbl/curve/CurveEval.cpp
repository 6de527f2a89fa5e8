#include <tslbl/curve/CurveEval.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/Steps.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr std::uint32_t kVersion = 2;

std::unique_ptr<CurveEval::EvalImpl> Make(const CommandRow* row) {
  if (row == nullptr) throw std::runtime_error("Invalid curve evaluation type.");
  return std::unique_ptr<CurveEval::EvalImpl>(row->make());
}

}  // namespace

const CommandRow* FindCommand(std::uint32_t type) {
  const auto rows = CommandTable();
  const auto row = std::ranges::find(rows, type, &CommandRow::type);
  return row != rows.end() ? &*row : nullptr;
}

const CommandRow* FindCommand(const std::wstring& text) {
  const auto rows = CommandTable();
  const auto row = std::ranges::find(rows, text, &CommandRow::text);
  return row != rows.end() ? &*row : FindCommand(EvalType::CSDecon);
}

CurveEval::CurveEval() : impl_(Make(FindCommand(EvalType::Empty))) {}
CurveEval::CurveEval(const CurveEval& other) : impl_(other.impl_->Clone()) {}
CurveEval::~CurveEval() = default;

CurveEval& CurveEval::operator=(const CurveEval& other) {
  if (this != &other) impl_.reset(other.impl_->Clone());
  return *this;
}

bool CurveEval::operator==(const CurveEval& other) const {
  return this == &other || (Type() == other.Type() && impl_->Equals(*other.impl_));
}

std::uint32_t CurveEval::Type() const { return impl_->Type(); }
std::wstring CurveEval::TypeText() const { return impl_->TypeText(); }

bool CurveEval::Execute(Curve& curve, Changed& changed, std::wstring& error) const {
  return impl_->Execute(curve, changed, error);
}

void CurveEval::Serialize(BinaryReader& reader) {
  std::uint32_t version = 0;
  reader >> version;
  if (version != kVersion) throw std::runtime_error("Unknown CurveEval version.");
  std::uint32_t type = 0;
  reader >> type;
  if (!reader.Good()) throw std::runtime_error("Unexpected end of stream.");
  auto impl = Make(FindCommand(type));
  reader >> *impl;
  impl_ = std::move(impl);
}

void CurveEval::Serialize(BinaryWriter& writer) const { writer << kVersion << Type() << *impl_; }

void CurveEval::Serialize(XMLParser& parser) {
  if (!parser.StartNode(L"CurveEval")) return;
  // The element is left also when what it holds is refused: the next one can still be read.
  const std::unique_ptr<XMLParser, void (*)(XMLParser*)> element(&parser, [](XMLParser* p) { p->EndNode(); });
  std::wstring text;
  auto impl = Make(parser.QAttribute(L"Type", text) ? FindCommand(text) : FindCommand(EvalType::Empty));
  impl->Serialize(parser);
  impl_ = std::move(impl);
}

void CurveEval::Serialize(XMLBuilder& builder) const {
  builder.StartNode(L"CurveEval");
  builder.WAttribute(L"Type", TypeText());
  impl_->Serialize(builder);
  builder.EndNode();
}

void CurveEval::Serialize(std::wstring& text) const {
  std::wstring params;
  impl_->Serialize(params);
  text = L"Cmd:\t" + TypeText() + L"\r\n" + params;
}

// A noise command right behind a baseline command may share the pass of that one.
bool ExecuteCurveEvals(Curve& curve, const std::vector<CurveEval>& evals, Changed& changed,
                       std::wstring& error) {
  for (auto eval = evals.begin(); eval != evals.end(); ++eval) {
    const BaselineParams* baseline = eval->impl_->QBaselineParams();
    const NoiseParams* noise =
        baseline != nullptr && eval + 1 != evals.end() ? (eval + 1)->impl_->QNoiseParams() : nullptr;
    if (noise == nullptr) {
      if (!eval->Execute(curve, changed, error)) return false;
    } else {
      curve.SetParam(*baseline);
      if (!DoBaselineAndNoise(curve, *noise, changed, error)) return false;
      ++eval;
    }
  }
  return true;
}

void CurveEvalsText(const std::vector<CurveEval>& evals, std::wstring& text) {
  for (const CurveEval& eval : evals) {
    std::wstring one;
    eval.Serialize(one);
    text += one;
  }
}

void AddCurveEval(XMLBuilder& builder, const CurveEval& eval) { eval.Serialize(builder); }

void LoadCurveEval(XMLParser& parser, std::vector<CurveEval>& evals) {
  CurveEval eval;
  eval.Serialize(parser);
  evals.push_back(eval);
}

}  // namespace TslBL
