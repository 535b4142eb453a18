// A converter service: a pool of threads takes jobs from a blocking queue, converts texts between character sets, and
// answers each job by a signal of its own.
//
// An event queue holds an event that equals one that waits once only.  So a job is an object of a class without an order
// of its own, which equals nothing but itself.
#include "zu/zu.hpp"

#include <iostream>
#include <string>
#include <vector>

using namespace zu::literals;

// What is to be done, and what has become of it.  The worker writes the result ahead of the signal, and who waits reads
// it behind: the signal orders the two.
struct JOB {
    ZU_OBJ obj;
    ZU_BUFFER *bytes; // never null
    ZU_CHARSET from;
    ZU_CHARSET to;
    ZU_BUFFER *result; // null until done, and if the bytes cannot be converted
    ZU_SIGNAL *done;
};
ZU_STDFUNCS_DECLARE( JOB, job )

static void jobFree( ZU_OBJ *thisObj )
{
    JOB *job = jobFrom( thisObj );
    ZU_REF_RELEASE( job->bytes );
    ZU_REF_RELEASE_OPT( job->result );
    ZU_REF_RELEASE( job->done );
}
static ZU_SORT zu___sort_JOB = ZU___SORT_INITIALIZER( "JOB", nullptr, jobFree, nullptr, nullptr );
ZU___STDFUNCS( JOB, job )

namespace {

zu::Ref<JOB> jobCreate( const std::string &bytes, ZU_CHARSET from, ZU_CHARSET to )
{
    JOB *job = reinterpret_cast<JOB *>( zu___ObjCreate( sizeof( JOB ), jobSort() ) );
    job->bytes = zuBufferCreateFromBytesCopy( reinterpret_cast<const uint8_t *>( bytes.data() ),
                                              static_cast<ZU_INT>( bytes.size() ) );
    job->from = from;
    job->to = to;
    job->result = nullptr;
    job->done = zuSignalCreate();
    return zu::adopt( job );
}

// Threads that work until the queue has an end for each of them: an event that is no job.
class Pool {
public:
    explicit Pool( int count )
    {
        for ( int i = 0; i < count; i++ ) {
            threads.push_back( zu::spawn( "converter " + std::to_string( i ), [ queue = queue ] { work( queue ); } ) );
        }
    }
    Pool( const Pool & ) = delete;
    Pool &operator=( const Pool & ) = delete;
    ~Pool()
    {
        // Each end is an object of its own, since equal events wait once.
        for ( std::size_t i = 0; i < threads.size(); i++ ) {
            zuEventQueueWriteEvent( queue.get(),
                                    zu::upcast( zu::adopt( zuBoxedIntCreate( static_cast<ZU_INT>( i ) ) ) ) );
        }
        for ( const zu::Ref<ZU_THREAD> &thread : threads ) {
            zuThreadJoin( thread.get() );
        }
    }
    void submit( const zu::Ref<JOB> &job )
    {
        zuEventQueueWriteEvent( queue.get(), zu::upcast( job ) );
    }

private:
    static void work( const zu::Ref<ZU_EVENT_QUEUE> &queue )
    {
        for ( ;; ) {
            zu::Ref<ZU_OBJ> event = zu::adopt( zuEventQueueReadEventTimed( queue.get(), -1 ) );
            if ( zuObjSort( event.get() ) != jobSort() ) {
                return;
            }
            JOB *job = jobFrom( event.get() );
            zu::Ref<ZU_STRING> text = zu::adopt(
                zuCharsetBufferToStringWithFlags( job->from, job->bytes, ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) );
            if ( text ) {
                job->result = zuCharsetStringToBuffer( job->to, text.get() );
            }
            zuSignalAssert( job->done );
        }
    }
    zu::Ref<ZU_EVENT_QUEUE> queue = zu::adopt( zuEventQueueCreate() );
    std::vector<zu::Ref<ZU_THREAD>> threads;
};

} // namespace

int main()
{
    zu::Runtime runtime( "service", "Converter service", "1.0" );
    Pool pool( 3 );
    std::vector<zu::Ref<JOB>> jobs;
    jobs.push_back( jobCreate( "Gr\xFC\xDF Gott", ZU_CHARSET_ISO_8859_1, ZU_CHARSET_UTF_8 ) );
    jobs.push_back( jobCreate( "\xCB\xCF\xD3\xCD\xCF\xD3", ZU_CHARSET_KOI_8R, ZU_CHARSET_UTF_8 ) );
    jobs.push_back( jobCreate( "gar\xC3nix", ZU_CHARSET_UTF_8, ZU_CHARSET_ISO_8859_1 ) );
    for ( const zu::Ref<JOB> &job : jobs ) {
        pool.submit( job );
    }
    for ( const zu::Ref<JOB> &job : jobs ) {
        zuSignalWait( job->done );
        if ( !job->result ) {
            std::cout << "that is no text of its character set\n";
            continue;
        }
        zu::Ref<ZU_STRING> text = zu::adopt( zuCharsetBufferToString( ZU_CHARSET_UTF_8, job->result ) );
        std::cout << text << '\n';
    }
}
