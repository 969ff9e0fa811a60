// The modem on the serial port: from the line, through a real communications handle, to the modem and back.
#include "program.h"
#include "support/test.h"

namespace {

class Modem : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(p.Connect(kModem)) << "is the modem there?";
        m_port = p.PortHandle();
        ASSERT_NE(INVALID_HANDLE_VALUE, m_port);
        // As programs set up a port: a line of its own speed, reads that answer with what there is.
        DCB dcb = {};
        dcb.DCBlength = sizeof dcb;
        ASSERT_TRUE(GetCommState(m_port, &dcb) && BuildCommDCBA("baud=57600 parity=N data=8 stop=1", &dcb));
        ASSERT_TRUE(SetCommState(m_port, &dcb));
        COMMTIMEOUTS timeouts = {MAXDWORD, MAXDWORD, 5000, 0, 5000};
        ASSERT_TRUE(SetCommTimeouts(m_port, &timeouts));
    }
    void TearDown() override
    {
        CloseHandle(m_port);
        EXPECT_EQ(0, p.Reply(lineDrop(p.call, nullptr, 0)));
        EXPECT_EQ(0, lineDeallocateCall(p.call));
        EXPECT_EQ("", p.telsim.Misuses());
        EXPECT_EQ(0u, p.telsim.GetCount(TELSIM_PORTS));
    }

    OVERLAPPED* Begin() { return &(m_overlapped = {}); }
    /// Waits for what was begun, as long as the port's time-outs allow; \return the bytes that went or came.
    DWORD Finish(BOOL done)
    {
        DWORD bytes = 0;
        const bool begun = done || GetLastError() == ERROR_IO_PENDING;
        return begun && GetOverlappedResult(m_port, &m_overlapped, &bytes, TRUE) ? bytes : 0;
    }
    void Write(const std::string& bytes)
    {
        const auto size = static_cast<DWORD>(bytes.size());
        ASSERT_EQ(size, Finish(WriteFile(m_port, bytes.data(), size, nullptr, Begin())));
    }
    /// What comes until there are so many bytes, or none for five seconds.
    std::string Read(DWORD size)
    {
        std::string bytes(size, '\0');
        DWORD at = 0;
        for (DWORD read = 1; at < size && read != 0; at += read)
            read = Finish(ReadFile(m_port, &bytes[at], (std::min)(size - at, DWORD{4096}), nullptr, Begin()));
        return bytes.substr(0, at);
    }
    void Expect(const std::string& answer) { EXPECT_EQ(answer, Read(static_cast<DWORD>(answer.size()))); }
    /// A command, and the answer with the line ends that it comes in.
    void Command(const std::string& command, const std::string& answer)
    {
        SCOPED_TRACE(command);
        Write(command + "\r");
        Expect("\r\n" + answer + "\r\n");
    }
    /// Resets the modem; from here on it does not echo commands.
    void Prepare()
    {
        Write("ATZ\r");
        Expect("ATZ\r\r\nOK\r\n");
        Write("ATE0\r");
        Expect("ATE0\r\r\nOK\r\n");
    }

    Program p;
    HANDLE m_port = INVALID_HANDLE_VALUE;
    OVERLAPPED m_overlapped = {};
};

} // namespace

TEST_F(Modem, AnswersCommands)
{
    EXPECT_EQ(static_cast<DWORD>(FILE_TYPE_CHAR), GetFileType(m_port));
    Buffer<VARSTRING> name(100);
    ASSERT_EQ(0, lineGetID(p.line, 0, 0, LINECALLSELECT_LINE, name.Get(), "comm/datamodem/portname"));
    EXPECT_EQ("COM99", name.Text(name->dwStringSize, name->dwStringOffset));
    Prepare();
    const std::pair<const char*, const char*> cases[] = {
        {"ATI3", "Simulated Modem 33600\r\n\r\nOK"},
        {"at&f&c1&d2x4m0l1", "OK"},
        {"AT+VCID=1", "OK"},
        {"ATS7=30S7?", "030\r\n\r\nOK"},
        {"ATS0=256", "ERROR"},
        {"ATJ", "ERROR"},
        {"hello", "ERROR"},
        {"ATH", "OK"},
        {"ATA", "NO CARRIER"},
        {"ATO", "NO CARRIER"},
        {"ATDT5550107", "BUSY"},
        {"ATDP555 0108", "NO DIALTONE"},
        {"ATD5550109", "NO CARRIER"},
        {"ATD5550100;", "OK"},
    };
    for (const auto& [command, answer] : cases)
        Command(command, answer);
    Write("ATV0\r");
    Expect("0\r");
    Write("ATS2=300\r");
    Expect("4\r");
}

TEST_F(Modem, EchoesDataUnchangedUntilThePortIsClosed)
{
    Prepare();
    Command("ATS12=10", "OK"); // a pause of 200 milliseconds will do
    Command("ATD5550100", "CONNECT 33600");
    std::string data;
    for (unsigned i = 0; data.size() < 65536; ++i)
        data += static_cast<char>(i * 31 + i / 256); // all bytes, in no short rhythm
    std::string echo;
    for (size_t sent = 0; sent < data.size(); sent += 2048) {
        Write(data.substr(sent, 2048));
        echo += Read(2048);
    }
    EXPECT_TRUE(data == echo) << echo.size() << " bytes came back";
    Write(data.substr(0, 60000)); // more than the terminal takes at a time
    EXPECT_TRUE(data.substr(0, 60000) == Read(60000));

    // Without a pause around it the escape is data; with pauses it leads back to commands, the connection stays.
    Write("+++ATH\r");
    Expect("+++ATH\r");
    Sleep(300);
    Write("+++");
    Expect("+++\r\nOK\r\n");
    Command("ATO", "CONNECT 33600");
    Write("still here");
    Expect("still here");

    // Closing the port is hanging up: who opens it next finds a modem in its first state.
    TearDown();
    ASSERT_EQ(0, lineShutdown(std::exchange(p.app, 0)));
    p.events.clear();
    SetUp();
    Prepare();
    Command("ATO", "NO CARRIER");
}

TEST_F(Modem, RingsAndHangsUp)
{
    Prepare();
    Write("AT*RING=5550123,Jane Doe\r");
    Expect("\r\nOK\r\n\r\nRING\r\n\r\nDATE = ");
    EXPECT_EQ(4u, Read(4).size());
    Expect("\r\nTIME = ");
    EXPECT_EQ(4u, Read(4).size());
    Expect("\r\nNMBR = 5550123\r\nNAME = Jane Doe\r\n");
    Write("AT*HANGUP=100;A\r"); // the caller hangs up soon after the call is answered
    Expect("\r\nCONNECT 33600\r\n");
    Expect("\r\nNO CARRIER\r\n");
    Command("AT*RING=blocked", "OK");
    Expect("\r\nRING\r\n");
    EXPECT_EQ("\r\nNMBR = P\r\nNAME = P\r\n", Read(48).substr(26));
    Command("ATH", "OK");
}
