// zu_benchmark_texts.h: texts in ten scripts for the benchmarks of Unicode functions, as each contestant takes them.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/sys/zu_mem.h"

#include <sstream>
#include <string>
#include <vector>

// Words of everyday texts in random order: about a megabyte of UTF-8.
struct BENCHMARK_SCRIPT {
    const char *name;
    const char *words;
    const char *between;
};
static const BENCHMARK_SCRIPT BENCHMARK_SCRIPTS[] = {
    { "English",
      "the quick river runs under old bridges and every morning People walk along its banks with dogs, newspapers "
      "Or coffee; in winter 1999 it froze over from March until April",
      " " },
    { "French",
      "le garçon préféré de ma mère a été très étonné par l'hôtel où nous avons déjà dîné Noël et août Élève façade "
      "naïve cœur pêche île",
      " " },
    { "Vietnamese",
      "Tiếng Việt được viết bằng chữ quốc ngữ với nhiều dấu thanh người ta đọc sách ở đường phố Hà Nội những buổi "
      "sáng trời đẹp",
      " " },
    { "Greek",
      "Οι άνθρωποι γεννιούνται ελεύθεροι και ίσοι στην αξιοπρέπεια και τα δικαιώματα Είναι προικισμένοι με λογική "
      "συνείδηση και οφείλουν να συμπεριφέρονται μεταξύ τους",
      " " },
    { "Russian",
      "Каждый человек должен обладать всеми правами и свободами ёлка йод Район стоит какой большой мой твой чай "
      "Зимой снег идёт",
      " " },
    { "Hebrew", "שָׁלוֹם לְכָל הָאֲנָשִׁים בַּבֹּקֶר הַזֶּה אֲנִי קוֹרֵא סֵפֶר טוֹב עַל הַיָּם וְהַשֶּׁמֶשׁ בית ספר ילד", " " },
    { "Arabic", "يُولَدُ جَمِيعُ النَّاسِ أَحْرَاراً مُتَسَاوِينَ فِي الْكَرَامَةِ وَالْحُقُوقِ كتاب مدرسة إلى آخر السؤال هؤلاء بيئة", " " },
    { "Hindi", "सभी मनुष्यों को गौरव और अधिकारों के मामले में जन्मजात स्वतन्त्रता और समानता प्राप्त है क़लम ज़मीन लड़का पढ़ना बड़ा फ़िल्म",
      " " },
    { "Japanese",
      "すべての 人間は 生まれながらにして 自由であり かつ 尊厳と 権利とに ついて 平等である ガラス ピアノ データ プログラム 東京 学校 図書館 です。",
      "" },
    { "Korean",
      "모든 인간은 태어날 때부터 자유로우며 그 존엄과 권리에 있어 동등하다 서울 학교에서 한국어를 공부합니다 좋은 날씨",
      " " },
};

inline std::string benchmarkText( const BENCHMARK_SCRIPT &script, size_t bytes = 1 << 20 )
{
    std::vector<std::string> words;
    std::istringstream stream( script.words );
    for ( std::string word; stream >> word; ) {
        words.push_back( word );
    }
    std::string text;
    text.reserve( bytes + 100 );
    for ( uint64_t state = 1; text.size() < bytes; ) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        text += words[ ( state >> 33 ) % words.size() ] + script.between;
    }
    return text;
}

inline std::string benchmarkUtf8( ZU_STRING *zus )
{
    ZU_INT length;
    char *chars = zuStringConvertToUtf8( zus, ZU_FALSE, &length );
    std::string text( chars, (size_t)length );
    zuMemFree( chars );
    return text;
}
inline std::u16string benchmarkUtf16( ZU_STRING *zus )
{
    ZU_INT length;
    char16_t *chars = zuStringConvertToWcstr( zus, ZU_FALSE, &length );
    std::u16string text( chars, (size_t)length );
    zuMemFree( chars );
    return text;
}
