#pragma once
// What a CurveEval owns: one evaluation with its parameters.
//
// For the sources of the library; not part of the library's interface.

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/CurveEval.h>
#include <string>

namespace TslBL {

class CurveEval::EvalImpl : public frame::SerialAndXml {
 public:
  // Type and text of the command's row in the table.
  virtual EvalType Type() const = 0;
  virtual std::wstring TypeText() const = 0;
  // A new copy, owned by the caller.
  virtual EvalImpl* Clone() const = 0;
  // Whether the other is the same command with equal parameters.
  virtual bool Equals(const EvalImpl& other) const = 0;
  // Stores the parameters and runs the step.
  virtual bool Execute(Curve& curve, Changed& changed, std::wstring& error) const = 0;
  // Copies the parameters to where the step reads them. False if this kind of curve has no
  // place for them; the command then fails without a message.
  virtual bool StoreParams(Curve& curve) const = 0;
};

// In the place of parameters: a command without any stores its own number in a stream and
// an empty element with its own name in a document; the Empty command stores nothing.
template <EvalType type>
struct NoParams {
  static constexpr bool kStored = type != EvalType::Empty;

  operator int() const { return 0; }
  bool operator==(const NoParams&) const { return true; }
  void Serialize(BinaryReader& reader) {
    std::uint32_t dropped = 0;
    if (kStored) reader >> dropped;
  }
  void Serialize(BinaryWriter& writer) const {
    if (kStored) writer << Number(type);
  }
  void Serialize(XMLParser&) {}
  void Serialize(XMLBuilder& builder) const {
    if (kStored) builder.WNode(FindCommand(type)->text, L"");
  }
  void Serialize(std::wstring& text) const { text.clear(); }
};

// Where most parameters go: into the member of Curve that holds such a record.
template <class Params>
bool StoreInCurve(Curve& curve, const Params& params) {
  curve.SetParam(params);
  return true;
}

// A command of its type and parameters. `store` is for parameters that only a class derived
// from Curve has: it finds the class, and returns false for a curve that is not of it.
template <EvalType type, class Params = NoParams<type>,
          bool (*store)(Curve&, const Params&) = StoreInCurve<Params>>
class EvalOf final : public CurveEval::EvalImpl {
 public:
  EvalOf() = default;
  explicit EvalOf(const Params& params) : params_(params) {}

  const Params& QParams() const { return params_; }

  EvalType Type() const override { return type; }
  std::wstring TypeText() const override { return FindCommand(type)->text; }
  EvalImpl* Clone() const override { return new EvalOf(*this); }
  bool Equals(const EvalImpl& other) const override {
    const auto* same = dynamic_cast<const EvalOf*>(&other);
    return same != nullptr && same->params_ == params_;
  }
  bool Execute(Curve& curve, Changed& changed, std::wstring& error) const override {
    return StoreParams(curve) && RunStepOf(type, curve, changed, error);
  }
  bool StoreParams(Curve& curve) const override { return store(curve, params_); }
  void Serialize(BinaryReader& reader) override { params_.Serialize(reader); }
  void Serialize(BinaryWriter& writer) const override { params_.Serialize(writer); }
  void Serialize(XMLParser& parser) override { params_.Serialize(parser); }
  void Serialize(XMLBuilder& builder) const override { params_.Serialize(builder); }
  void Serialize(std::wstring& text) const override { params_.Serialize(text); }

 private:
  Params params_;
};

}  // namespace TslBL
