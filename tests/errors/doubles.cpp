#include "tests/errors/doubles.h"

namespace errors_test {

namespace {

class ConexionDouble : public Conexion {
public:
    void IniciarTrans(const std::string&) override {}
    void ConfirmarTrans(const std::string&) override {}
    void RevertirTrans(const std::string&, std::int32_t) override {}
    void Ejecutar(const std::string&) override {}
};

class SesionDouble : public SesionGlobal {
public:
    explicit SesionDouble(ProviderDouble& provider) : provider_(provider) {}
    Ref<Conexion> LaConexion() override {
        if (provider_.onConnection) provider_.onConnection();
        ++provider_.connectionsGiven;
        return std::make_shared<ConexionDouble>();
    }
    std::uint8_t ProfundidadTransaccion() const override { return 0; }
    void ProfundidadTransaccion(std::uint8_t) override {}
    Ref<GeneradorClaves> ElGeneradorClaves() override { return {}; }
    std::string TextoParaSQL(const std::string& texto) const override { return texto; }

private:
    ProviderDouble& provider_;
};

}  // namespace

Value ObjectDouble::ReadMember(std::string_view name) {
    heard.push_back("read " + std::string(name));
    const auto found = members.find(name);
    if (found == members.end()) Raise(RunTimeError::NoSuchMember);
    return found->second;
}

void ObjectDouble::WriteMember(std::string_view name, const Value& value) {
    heard.push_back("write " + std::string(name));
    if (!members.contains(name)) Raise(RunTimeError::NoSuchMember);
    members.find(name)->second = value;
}

Value ObjectDouble::CallMember(std::string_view name) {
    heard.push_back("call " + std::string(name));
    const auto found = calls.find(name);
    if (found != calls.end()) found->second();
    return {};
}

std::vector<std::string> ObjectDouble::Called() const {
    std::vector<std::string> called;
    for (const std::string& one : heard) {
        if (one.starts_with("call ")) called.push_back(one.substr(5));
    }
    return called;
}

std::shared_ptr<ObjectDouble> ConnectionDouble(std::int32_t state) {
    auto connection = std::make_shared<ObjectDouble>("Connection");
    connection->members["State"] = state;
    connection->members["ConnectionString"] = "Data Source=plant;Password=secret";
    connection->members["Errors"] = Value(ErrorList({}));
    return connection;
}

std::shared_ptr<ObjectDouble> ErrorList(const std::vector<std::string>& descriptions) {
    auto list = std::make_shared<ObjectDouble>("Errors");
    list->members["Count"] = static_cast<std::int32_t>(descriptions.size());
    for (std::size_t i = 0; i < descriptions.size(); ++i) {
        auto entry = std::make_shared<ObjectDouble>("Error");
        entry->members["Description"] = descriptions[i];
        list->members[std::to_string(i)] = Value(entry);
    }
    return list;
}

std::shared_ptr<ObjectDouble> ContextWithRequest() {
    auto server = std::make_shared<ObjectDouble>("ServerVariables");
    server->members["SERVER_NAME"] = "plant.example";
    server->members["REQUEST_METHOD"] = "POST";
    server->members["URL"] = "/boletines";
    auto request = std::make_shared<ObjectDouble>("Request");
    request->members["ServerVariables"] = Value(server);
    request->members["queryString"] = "semana=10";
    request->members["Form"] = "nota=100%25";
    request->members["Cookies"] = "s=1";
    auto context = std::make_shared<ObjectDouble>("ObjectContext");
    context->members["Request"] = Value(request);
    return context;
}

BoxAnswer PlatformDouble::MessageBox(const std::string& text, const std::string& title, std::int32_t style) const {
    boxes.push_back(title + "|" + std::to_string(style) + "|" + text);
    return answer;
}

ProviderDouble::ProviderDouble() : session_(std::make_shared<SesionDouble>(*this)) {}

SesionGlobal& ProviderDouble::Session() { return *session_; }

ErrorsTest::ErrorsTest() : platformBefore_(ReplacePlatform(platform)), providerBefore_(InstallProvider(provider)) {
    ReplaceSwitches(&switches);
    ClearError();
    Fields() = ModuleFields();
}

ErrorsTest::~ErrorsTest() {
    ReplaceSwitches(nullptr);
    ReplacePlatform(platformBefore_);
    InstallProvider(providerBefore_);
    ClearError();
    Fields() = ModuleFields();
}

void ErrorsTest::FailIn(std::string operation) {
    switches.entering = [operation = std::move(operation)](std::string_view entered) {
        if (entered == operation) RaiseError(9999, "test", "forced");
    };
}

void SetCurrent(std::int32_t number, std::string source, std::string description) {
    ClearError();
    CurrentError().number = number;
    CurrentError().source = std::move(source);
    CurrentError().description = std::move(description);
}

void SetRefused() { SetCurrent(kRefused, "dhRichClient3", "UNIQUE constraint failed"); }

void RaiseRefused() { RaiseError(kRefused, "dhRichClient3", "UNIQUE constraint failed"); }

ErrorRecord RaisedBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const RaisedError& error) {
        return error.Record();
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

std::string Joined(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces)
        text += piece;
    return text;
}

}  // namespace errors_test
