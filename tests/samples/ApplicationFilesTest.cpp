// What a receiver's engines would be given.

#include "support/Bytes.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>

namespace {

const std::filesystem::path FOLDER = APPLICATIONS;

std::string read(const std::string& path) {
    std::ifstream file(FOLDER / path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The fields of a class file, one after the other.
class ClassFile {
public:
    explicit ClassFile(const std::string& path) : m_bytes(read(path)) {}

    std::size_t number(unsigned bytes) {
        std::size_t value = 0;
        for (; bytes != 0; --bytes) {
            value = value << 8U | static_cast<unsigned char>(m_bytes.at(m_at++));
        }
        return value;
    }

    std::string text(std::size_t size) {
        m_at += size;
        return m_bytes.substr(m_at - size, size);
    }

    /// Classes are kept as the place of their name, all else that is no text is passed over.
    void readConstants() {
        m_constants.resize(number(2));
        m_classes.resize(m_constants.size());
        for (std::size_t at = 1; at < m_constants.size(); ++at) {
            switch (number(1)) {
            case 1: // CONSTANT_Utf8
                m_constants[at] = text(number(2));
                break;
            case 7: // CONSTANT_Class
                m_classes[at] = number(2);
                break;
            default: // members, and names with types: two places
                number(4);
            }
        }
    }

    std::string constant() { return m_constants.at(number(2)); }
    std::string className() { return m_constants.at(m_classes.at(number(2))); }

    /// Name, type and attributes of each.
    Lines members() {
        Lines all;
        for (std::size_t left = number(2); left != 0; --left) {
            number(2); // access_flags
            std::string line = constant();
            line += constant();
            for (std::size_t attributes = number(2); attributes != 0; --attributes) {
                line += " " + constant();
                text(number(4));
            }
            all.push_back(line);
        }
        return all;
    }

    bool isAtEnd() const { return m_at == m_bytes.size(); }

private:
    std::string m_bytes;
    std::size_t m_at = 0;
    Lines m_constants;
    std::vector<std::size_t> m_classes;
};

} // namespace

TEST(ApplicationFiles, ThePollIsAnXlet) {
    ClassFile file("enquete/example/mareacu/enquete/EnqueteXlet.class");
    EXPECT_EQ(file.number(4), 0xCAFEBABEU);
    EXPECT_EQ(file.number(4), 47U); // of Java 1.3
    file.readConstants();
    EXPECT_EQ(file.number(2), 0x0021U); // public
    EXPECT_EQ(file.className(), "example/mareacu/enquete/EnqueteXlet");
    EXPECT_EQ(file.className(), "java/lang/Object");
    EXPECT_EQ(file.number(2), 1U);
    EXPECT_EQ(file.className(), "javax/tv/xlet/Xlet");
    EXPECT_THAT(file.members(), testing::ElementsAre("contextLjavax/tv/xlet/XletContext;"));
    EXPECT_THAT(file.members(),
                testing::ElementsAre("<init>()V Code", "initXlet(Ljavax/tv/xlet/XletContext;)V Code Exceptions",
                                     "startXlet()V Code Exceptions", "pauseXlet()V Code",
                                     "destroyXlet(Z)V Code Exceptions"));
    EXPECT_EQ(file.number(2), 0U); // attributes
    EXPECT_TRUE(file.isAtEnd());
}

TEST(ApplicationFiles, TheGuidesMediaAreThere) {
    const std::string document = read("guia/principal.ncl");
    const std::regex source("src=\"([^\"]+)\"");
    Lines files;
    for (std::sregex_iterator each(document.begin(), document.end(), source), end; each != end; ++each) {
        const std::string name = (*each)[1];
        if (name.find("://") == std::string::npos) {
            EXPECT_TRUE(std::filesystem::exists(FOLDER / "guia" / name)) << name;
            files.push_back(name);
        }
    }
    EXPECT_THAT(files, testing::ElementsAre("imagens/fundo.png", "imagens/marca.png", "grade.lua"));
}

TEST(ApplicationFiles, PicturesAreWhole) {
    for (const char* const each : {"guia/imagens/fundo.png", "guia/imagens/marca.png", "icones/dvb.icon.0001",
                                   "icones/dvb.icon.0008", "icones/dvb.icon.0020"}) {
        const std::string bytes = read(each);
        EXPECT_EQ(bytes.substr(1, 3), "PNG") << each;
        EXPECT_EQ(bytes.substr(bytes.size() - 8, 4), "IEND") << each;
    }
}
